#include "benchmarks/dragging/DropLatency.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "benchmarks/dragging/HighlightArrivals.h"
#include "benchmarks/support/GeometryWatcher.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/DragHand.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::benchmark {

using desktop::DesktopError;
using desktop::DragHand;
using desktop::LumatileProcess;
using desktop::MonitorLayout;
using desktop::PixelRect;
using desktop::TestDesktop;
using desktop::TestWindow;
using desktop::WindowManager;
using desktop::XClient;

namespace {

constexpr PixelRect start{500, 300, 700, 450};
constexpr PixelRect leftHalf{0, 0, 960, 1080};

/// A private desktop on which either the program or the window manager itself snaps.
class DropDesktop {
public:
    explicit DropDesktop(bool withProgram)
        : desktop_(MonitorLayout::landscape(), WindowManager::Kind::metacity,
                   {.ownBindings = false, .compositing = false, .edgeTiling = !withProgram}),
          name_(withProgram ? "Lumatile" : "metacity") {
        if (withProgram) {
            program_ = std::make_unique<LumatileProcess>(desktop_.session(), LUMATILE_PROGRAM);
        }
    }

    /// A first drop, by which the place is learnt that the others lead to.
    void warmUp() {
        const std::unique_ptr<TestWindow> window = dragToEdge();
        desktop_.input().buttonUp();
        if (!XClient::waitUntil([&] { return window->frame() == leftHalf; })) {
            throw DesktopError(name_ + " drops the window at " + toString(window->frame()));
        }
        target_ = GeometryWatcher(desktop_.display(), window->id()).place();
    }

    void drop() {
        const std::unique_ptr<TestWindow> window = dragToEdge();
        const std::optional<double> time =
            GeometryWatcher(desktop_.display(), window->id()).release(target_);
        // The desktop's own hand still counts it as held.
        desktop_.input().buttonUp();
        if (!time) {
            throw DesktopError(name_ + " drops the window at " + toString(window->frame()));
        }
        samples_.push_back(*time);
    }

    const std::vector<double>& samples() const { return samples_; }

private:
    /// A new window each time, since a tile cannot be undone from outside everywhere.
    std::unique_ptr<TestWindow> dragToEdge() {
        std::unique_ptr<TestWindow> window = desktop_.openWindow({});
        window->place(start);
        const HighlightArrivals highlight(desktop_.display());
        DragHand hand(desktop_.input());
        if (!hand.grip(*window)) {
            throw DesktopError(name_ + ": the window does not follow the pointer");
        }
        hand.moveTo(2, leftHalf.height / 2);
        // A window manager decides when it comes to the release, after the movements.
        if (program_ && !XClient::waitUntil([&] { return highlight.shown().has_value(); })) {
            throw DesktopError(name_ + " does not show where the window will be");
        }
        // Nobody lets go in the moment in which the edge is reached; of random length, so that
        // nobody's timers fall into step.
        std::this_thread::sleep_for(std::chrono::milliseconds(pause_(random_)));
        return window;
    }

    TestDesktop desktop_;
    std::unique_ptr<LumatileProcess> program_;
    std::string name_;
    GeometryWatcher::Place target_;
    std::vector<double> samples_;
    std::mt19937 random_{1};
    std::uniform_int_distribution<int> pause_{60, 100};
};

}  // namespace

DropLatency DropLatency::measure(int drops) {
    std::fprintf(stderr, "drops under metacity\n");
    DropDesktop withProgram(true);
    DropDesktop itself(false);
    const std::array desktops{&withProgram, &itself};
    for (DropDesktop* desktop : desktops) {
        desktop->warmUp();
    }
    for (int round = 0; round < drops; ++round) {
        for (DropDesktop* desktop : desktops) {
            desktop->drop();
        }
    }
    return {Statistics::of(withProgram.samples()), Statistics::of(itself.samples())};
}

}  // namespace lumatile::benchmark
