#include "benchmarks/dragging/ExpectedHighlight.h"

#include "benchmarks/support/FollowingWindow.h"
#include "commands/BuiltInCommands.h"

namespace lumatile::benchmark {

class ExpectedHighlight::Recorder final : public DragSnapHighlighting {
public:
    void show(const Rect& frame) override { shows.push_back({frame, now}); }
    void hide() override {}

    Clock::time_point now;
    std::vector<Show> shows;
};

ExpectedHighlight::ExpectedHighlight(const Rect& visibleFrame)
    : commands_(BuiltInCommands::defaults()),
      recorder_(std::make_shared<Recorder>()),
      controller_(
          recorder_,
          [window = std::make_shared<FollowingWindow>()](const Point&) { return window; },
          [visibleFrame](const Point&) { return ScreenContext::of(visibleFrame); },
          [this]() -> const std::vector<SnapCommand>& { return commands_; }) {
    controller_.dragBegan(visibleFrame.center());
}

void ExpectedHighlight::pointerMoved(const Point& to, Clock::time_point at) {
    recorder_->now = at;
    controller_.dragMoved(to);
}

const std::vector<ExpectedHighlight::Show>& ExpectedHighlight::shows() const {
    return recorder_->shows;
}

}  // namespace lumatile::benchmark
