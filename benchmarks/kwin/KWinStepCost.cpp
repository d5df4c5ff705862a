#include "benchmarks/kwin/KWinStepCost.h"

#include <chrono>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "benchmarks/kwin/KWinBareMoves.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/shifting/KWinShiftingDesk.h"

namespace lumatile::benchmark {

using desktop::DesktopError;
using desktop::KWinShiftingDesk;
using desktop::ShiftedWindow;

namespace {

using Clock = std::chrono::steady_clock;

std::vector<std::unique_ptr<ShiftedWindow>> openWindows(KWinShiftingDesk& desk, std::size_t count) {
    std::vector<std::unique_ptr<ShiftedWindow>> windows;
    for (std::size_t index = 0; index < count; ++index) {
        windows.push_back(desk.open({static_cast<int>(100 + 7 * (index % 50)),
                                     static_cast<int>(100 + 11 * (index % 40)), 300, 200}));
    }
    return windows;
}

using Frames = std::map<std::string, Rect>;

Frames framesOf(KWinShiftingDesk& desk) {
    desk.desktop().probe().sync();
    Frames frames;
    for (const auto& [id, window] : desk.desktop().probe().windows()) {
        frames[id] = window.frame;
    }
    return frames;
}

std::vector<std::pair<std::string, Point>> cornersOf(const Frames& frames, double dx) {
    std::vector<std::pair<std::string, Point>> corners;
    for (const auto& [id, frame] : frames) {
        corners.emplace_back(id, Point{frame.x + dx, frame.y});
    }
    return corners;
}

}  // namespace

KWinStepCost KWinStepCost::measure(std::size_t windows, int steps) {
    std::fprintf(stderr, "steps of %zu windows\n", windows);
    KWinShiftingDesk desk({});
    const auto open = openWindows(desk, windows);
    desk.settle();
    // The first step meets the windows as well.
    desk.step();
    KWinBareMoves bare(desk.desktop().session());
    std::vector<double> stepTimes;
    std::vector<double> bareTimes;
    for (int taken = 0; taken < steps; ++taken) {
        desk.settle();
        const Frames before = framesOf(desk);
        const Clock::time_point begin = Clock::now();
        desk.step();
        stepTimes.push_back(
            std::chrono::duration<double, std::micro>(Clock::now() - begin).count());
        desk.settle();
        const Frames after = framesOf(desk);
        if (before.size() != windows || after.size() != windows) {
            throw DesktopError("there are other windows than were opened");
        }
        for (const auto& [id, frame] : after) {
            if (frame == before.at(id)) {
                throw DesktopError("a window has not moved in a step");
            }
        }
        // There and back, so that the orbit notices nothing; and in turn with the steps, since
        // nobody is alone on a machine.
        bareTimes.push_back(bare.move(cornersOf(after, 1)));
        desk.settle();
        bareTimes.push_back(bare.move(cornersOf(after, 0)));
    }
    return {windows, Statistics::of(stepTimes), Statistics::of(bareTimes)};
}

}  // namespace lumatile::benchmark
