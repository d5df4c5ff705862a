#include "benchmarks/protection/StepCost.h"

#include <time.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "benchmarks/protection/BareMoves.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/ReplyWaits.h"
#include "tests/desktop/support/ShiftingDesktop.h"

namespace lumatile::benchmark {

using desktop::DesktopError;
using desktop::PixelRect;
using desktop::ReplyWaits;
using desktop::ShiftingDesktop;
using desktop::TestWindow;
using desktop::WindowManager;
using desktop::XClient;

namespace {

using Clock = std::chrono::steady_clock;

constexpr double microsecondsPerSecond = 1e6;

/// Processor time of this thread so far.
double threadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

std::vector<std::unique_ptr<TestWindow>> openWindows(ShiftingDesktop& shifting, std::size_t count) {
    std::vector<std::unique_ptr<TestWindow>> windows;
    for (std::size_t index = 0; index < count; ++index) {
        TestWindow::Options options;
        options.area = {static_cast<int>(100 + 7 * (index % 50)),
                        static_cast<int>(100 + 11 * (index / 50)), 300, 200};
        windows.push_back(std::make_unique<TestWindow>(shifting.desktop().display(), options));
        xcb_map_window(windows.back()->connection(), windows.back()->id());
        xcb_flush(windows.back()->connection());
    }
    windows.back()->activate();
    desktop::DesktopObserver& observer = shifting.observer();
    const bool ready = XClient::waitUntil([&] {
        return std::all_of(windows.begin(), windows.end(), [&](const auto& window) {
            return observer.cardinals(window->id(), "_NET_FRAME_EXTENTS").size() == 4;
        });
    });
    if (!ready) {
        throw DesktopError("the windows do not open");
    }
    shifting.settle();
    return windows;
}

}  // namespace

StepCost StepCost::measure(std::size_t windows, int steps) {
    std::fprintf(stderr, "steps of %zu windows\n", windows);
    ShiftingDesktop shifting(WindowManager::Kind::openbox);
    const auto open = openWindows(shifting, windows);
    // The first step meets the windows as well.
    shifting.step();
    std::vector<PixelRect> homes;
    homes.reserve(open.size());
    for (const auto& window : open) {
        homes.push_back(shifted(window->frame(), {1, 2}));
    }
    StepCost cost;
    cost.windows = windows;
    std::vector<double> times;
    std::vector<double> own;
    std::vector<double> bare;
    std::size_t messages = 0;
    for (int taken = 1; taken <= steps; ++taken) {
        // What the window manager still draws is not the step's.
        shifting.settle();
        shifting.observer().forget();
        {
            const double ownBefore = threadSeconds();
            const ReplyWaits waits(shifting.connection().get());
            const Clock::time_point begin = Clock::now();
            shifting.step();
            times.push_back(
                std::chrono::duration<double, std::micro>(Clock::now() - begin).count());
            own.push_back((threadSeconds() - ownBefore) * microsecondsPerSecond);
            cost.roundTrips = std::max(cost.roundTrips, waits.roundTrips());
        }
        messages += shifting.observer().messages().size();
        const Offset& offset =
            ShiftingDesktop::ring[static_cast<std::size_t>(taken) % ShiftingDesktop::ring.size()];
        for (std::size_t index = 0; index < windows; ++index) {
            if (open[index]->frame() != shifted(homes[index], offset)) {
                throw DesktopError("a window has not moved in step " + std::to_string(taken));
            }
        }
        // There and back, so that the orbit notices nothing; and in turn with the steps, since
        // nobody is alone on a machine.
        shifting.settle();
        BareMoves moves(shifting.desktop().display(), open);
        bare.push_back(moves.move(1, 0));
        shifting.settle();
        bare.push_back(moves.move(-1, 0));
        for (const auto& window : open) {
            window->roundTrip();
            window->forgetConfigurations();
        }
    }
    cost.bareMicroseconds = Statistics::of(bare);
    cost.writes = static_cast<double>(messages) / static_cast<double>(windows) / steps;
    cost.microseconds = Statistics::of(times);
    cost.ownMicroseconds = Statistics::of(own);
    return cost;
}

}  // namespace lumatile::benchmark
