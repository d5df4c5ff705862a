#include "benchmarks/dragging/DragCost.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <numbers>

#include "benchmarks/dragging/ExpectedHighlight.h"
#include "benchmarks/dragging/HighlightArrivals.h"
#include "benchmarks/support/ProcessFigures.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/DragHand.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::benchmark {

using desktop::Deadline;
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

using Clock = FastMouse::Clock;

constexpr Rect screen{0, 0, 1920, 1080};
constexpr Point middle{960, 540};

// Pixels from the border of the screen; well inside the edge.
constexpr double inset = 3;

// A share of the reports that may be missing from the second in which they were due.
constexpr double mostMissing = 0.02;

/// Round and round, far from the edges.
Point inTheMiddle(std::size_t report) {
    constexpr double radius = 200;
    constexpr double reportsOfRound = 1000;
    const double angle = static_cast<double>(report) / reportsOfRound * 2 * std::numbers::pi;
    return {middle.x + std::round(radius * std::cos(angle)),
            middle.y + std::round(radius * std::sin(angle))};
}

/// Up and down along the left edge, a pixel a report, where the left half is the target all the
/// time.
Point alongAnEdge(std::size_t report) {
    constexpr double length = 300;
    const double way = std::fmod(static_cast<double>(report), 2 * length);
    return {inset, middle.y - length / 2 + std::min(way, 2 * length - way)};
}

/// Round the screen along its border, a pixel a report, over every target.
Point overTargets(std::size_t report) {
    constexpr double width = screen.width - 2 * inset;
    constexpr double height = screen.height - 2 * inset;
    double way = std::fmod(static_cast<double>(report) + height / 2, 2 * (width + height));
    if (way < height) {
        return {inset, inset + way};
    }
    way -= height;
    if (way < width) {
        return {inset + way, inset + height};
    }
    way -= width;
    if (way < height) {
        return {inset + width, inset + height - way};
    }
    way -= height;
    return {inset + width - way, inset};
}

/// To the left edge and away again, long enough for the highlight to be gone each time.
Point toAnEdgeAndAway(std::size_t report) {
    constexpr double reportsOfTurn = 500;
    constexpr double farthest = 400;
    const double way = std::fmod(static_cast<double>(report), reportsOfTurn);
    return {
        std::max(std::abs(way - reportsOfTurn / 2) / (reportsOfTurn / 2) * farthest - 60, inset),
        middle.y};
}

PixelRect pixels(const Rect& rect) {
    return {static_cast<int>(rect.x), static_cast<int>(rect.y), static_cast<int>(rect.width),
            static_cast<int>(rect.height)};
}

/// The private desktop with the program and a window to drag.
class DragDesktop {
public:
    DragDesktop()
        : desktop_(MonitorLayout::landscape(), WindowManager::Kind::openbox),
          window_(desktop_.openWindow({})),
          program_(desktop_.session(), LUMATILE_PROGRAM),
          arrivals_(desktop_.display()),
          mouse_(desktop_.display()) {}

    DragCost::Course run(const std::string& name, const FastMouse::Path& path, int seconds) {
        std::fprintf(stderr, "dragging %s: %d s\n", name.c_str(), seconds);
        window_->place({500, 300, 700, 450});
        DragHand hand(desktop_.input());
        if (!hand.grip(*window_)) {
            throw DesktopError("the window does not follow the pointer");
        }
        hand.moveTo(static_cast<int>(middle.x), static_cast<int>(middle.y));
        waitUntilQuiet();
        arrivals_.forget();

        ExpectedHighlight expected(screen);
        const ProcessFigures before = ProcessFigures::of(program_.pid());
        const auto reports =
            static_cast<std::size_t>(std::chrono::seconds(seconds) / FastMouse::reportTime);
        const FastMouse::Pace pace = mouse_.follow(
            path, reports,
            [&](const Point& point, Clock::time_point at) { expected.pointerMoved(point, at); });
        const ProcessFigures after = ProcessFigures::of(program_.pid());
        if (pace.seconds > seconds * (1 + mostMissing)) {
            throw DesktopError("the mouse needed " + std::to_string(pace.seconds) + " s for " +
                               std::to_string(seconds));
        }
        collect(expected.shows());
        desktop_.input().movePointer(static_cast<int>(middle.x), static_cast<int>(middle.y));
        waitUntilQuiet();
        hand.letGo();
        return {name, pace, (after.processorSeconds - before.processorSeconds) / pace.seconds,
                static_cast<double>(after.wakeUps - before.wakeUps) / pace.seconds};
    }

    const std::vector<double>& latenesses() const { return latenesses_; }

private:
    void waitUntilQuiet() {
        if (!XClient::waitUntil([&] { return !arrivals_.shown(); })) {
            throw DesktopError("the highlight does not go away from " +
                               toString(arrivals_.shown().value_or(PixelRect{})));
        }
    }

    /// Every show in its turn has its arrival, and none is left over.
    void collect(const std::vector<ExpectedHighlight::Show>& shows) {
        const bool allArrived =
            XClient::waitUntil([&] { return arrivals_.arrivals().size() >= shows.size(); },
                               Deadline::in(std::chrono::seconds(2)));
        const auto& arrivals = arrivals_.arrivals();
        if (!allArrived || arrivals.size() != shows.size()) {
            throw DesktopError("the highlight was shown " + std::to_string(arrivals.size()) +
                               " times instead of " + std::to_string(shows.size()));
        }
        for (std::size_t index = 0; index < shows.size(); ++index) {
            if (arrivals[index].place != pixels(shows[index].frame)) {
                throw DesktopError("the highlight is at " + toString(arrivals[index].place) +
                                   " instead of " + toString(pixels(shows[index].frame)));
            }
            latenesses_.push_back(
                std::chrono::duration<double, std::micro>(arrivals[index].at - shows[index].at)
                    .count());
        }
    }

    TestDesktop desktop_;
    std::unique_ptr<TestWindow> window_;
    LumatileProcess program_;
    HighlightArrivals arrivals_;
    FastMouse mouse_;
    std::vector<double> latenesses_;
};

}  // namespace

DragCost DragCost::measure(int seconds) {
    struct {
        const char* name;
        Point (*path)(std::size_t);
    } const ways[] = {{"in the middle", inTheMiddle},
                      {"along an edge", alongAnEdge},
                      {"over targets", overTargets},
                      {"to an edge and away", toAnEdgeAndAway}};
    DragDesktop desktop;
    DragCost cost;
    for (const auto& [name, path] : ways) {
        cost.courses.push_back(desktop.run(name, path, seconds));
    }
    cost.lateness = Statistics::of(desktop.latenesses());
    return cost;
}

}  // namespace lumatile::benchmark
