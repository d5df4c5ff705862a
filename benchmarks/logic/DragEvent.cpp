// What one movement of the mouse costs while a window is dragged, without the window system: far
// from the edges, along an edge, and from one target to the next with every event. A mouse tells of
// a thousand movements a second, and most of them come nowhere near an edge.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <benchmark/benchmark.h>

#include "benchmarks/support/FollowingWindow.h"
#include "commands/BuiltInCommands.h"
#include "drag_snap/DragSnapController.h"

namespace lumatile {
namespace {

constexpr Rect visibleFrame{0, 32, 1920, 1048};

/// Counts, so that what was measured can be told from nothing.
class CountingHighlight final : public DragSnapHighlighting {
public:
    void show(const Rect&) override { ++shows; }
    void hide() override {}

    std::int64_t shows = 0;
};

/// The built-in commands, and behind them areas of the user's own that are reached in the middle of
/// the screen: they have to be looked at, and none changes which command is found at an edge. As
/// many of them are for portrait screens as of the built-in ones, so that 1000 are 34 writ large.
std::vector<SnapCommand> commandsUpTo(std::size_t count) {
    const std::vector<SnapCommand> builtIn = BuiltInCommands::defaults();
    std::vector<SnapCommand> commands = builtIn;
    while (commands.size() < count) {
        const Axis axis = builtIn[commands.size() % builtIn.size()].axis;
        commands.push_back(SnapCommand::custom("Area", 0, 0, 6, 6));
        commands.back().axis = axis;
        commands.back().activationSegments = {{4, 4, 4, 4}};
    }
    return commands;
}

/// A window held in the middle of the screen.
class Drag {
public:
    explicit Drag(const benchmark::State& state)
        : commands_(commandsUpTo(static_cast<std::size_t>(state.range(0)))),
          controller_(
              highlight_, [this](const Point&) { return window_; },
              [](const Point&) { return ScreenContext::of(visibleFrame); },
              [this]() -> const std::vector<SnapCommand>& { return commands_; }) {
        controller_.dragBegan({960, 540});
    }

    /// Moves the pointer to each of the points in turn, again and again.
    void measure(benchmark::State& state, const std::vector<Point>& points) {
        std::size_t next = 0;
        for (auto _ : state) {
            controller_.dragMoved(points[next]);
            next = next + 1 == points.size() ? 0 : next + 1;
        }
    }

    DragSnapController& controller() { return controller_; }
    std::int64_t shows() const { return highlight_->shows; }

private:
    std::vector<SnapCommand> commands_;
    std::shared_ptr<CountingHighlight> highlight_ = std::make_shared<CountingHighlight>();
    std::shared_ptr<FollowingWindow> window_ = std::make_shared<FollowingWindow>();
    DragSnapController controller_;
};

void dragInTheMiddle(benchmark::State& state) {
    Drag drag(state);
    drag.measure(state, {{960, 540}, {962, 541}, {964, 542}, {962, 543}});
    if (drag.shows() != 0) {
        state.SkipWithError("a target was shown far from the edges");
    }
}
BENCHMARK(dragInTheMiddle)->Arg(34)->Arg(1000);

/// Along the left edge, where the left half is the target all the time.
void dragAlongAnEdge(benchmark::State& state) {
    Drag drag(state);
    drag.measure(state, {{2, 540}, {3, 542}, {2, 544}, {1, 542}});
    if (drag.shows() != 1 || drag.controller().currentTarget() != Rect{0, 32, 960, 1048}) {
        state.SkipWithError("the target is not the left half, shown once");
    }
}
BENCHMARK(dragAlongAnEdge)->Arg(34)->Arg(1000);

/// From one edge to the other, so that every event has another target.
void dragOverTargets(benchmark::State& state) {
    Drag drag(state);
    drag.measure(state, {{2, 540}, {1918, 540}});
    if (drag.shows() != static_cast<std::int64_t>(state.iterations())) {
        state.SkipWithError("an event had no target of its own");
    }
}
BENCHMARK(dragOverTargets)->Arg(34)->Arg(1000);

}  // namespace
}  // namespace lumatile
