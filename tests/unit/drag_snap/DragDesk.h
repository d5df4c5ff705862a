#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "commands/BuiltInCommands.h"
#include "drag_snap/DragSnapController.h"
#include "tests/unit/drag_snap/DraggedWindow.h"

namespace lumatile {

/// Remembers what the user saw.
class RecordedHighlight final : public DragSnapHighlighting {
public:
    void show(const Rect& frame) override {
        shown.push_back(frame);
        visible = frame;
    }
    void hide() override {
        ++hides;
        visible.reset();
    }

    std::vector<Rect> shown;
    int hides = 0;
    std::optional<Rect> visible;
};

/// A controller between a landscape screen with a panel on top, a portrait one to its right, and
/// one window.
struct DragDesk {
    static constexpr Rect wide{0, 24, 2400, 1200};
    static constexpr Rect tall{2400, 0, 1200, 2400};

    std::shared_ptr<RecordedHighlight> highlight = std::make_shared<RecordedHighlight>();
    std::shared_ptr<DraggedWindow> window =
        std::make_shared<DraggedWindow>(Rect{600, 400, 800, 600});
    std::vector<SnapCommand> commands = BuiltInCommands::defaults();
    std::vector<Rect> screens{wide, tall};
    DragSnapController controller{
        highlight,
        [this](const Point& point) {
            return window && window->current.contains(point) ? window : nullptr;
        },
        [this](const Point& point) -> std::optional<ScreenContext> {
            const auto found = std::find_if(screens.begin(), screens.end(),
                                            [&](const Rect& each) { return each.contains(point); });
            if (screens.empty()) {
                return std::nullopt;
            }
            return ScreenContext::of(found != screens.end() ? *found : screens.front());
        },
        [this]() -> const std::vector<SnapCommand>& { return commands; }};

    /// Presses the button on the window's title.
    void press() {
        hand = {window->current.x + 100, window->current.y + 5};
        controller.dragBegan(hand);
    }

    /// Moves the pointer, and the window with it.
    void drag(const Point& to) {
        window->current = window->current.offsetBy(to.x - hand.x, to.y - hand.y);
        hand = to;
        controller.dragMoved(to);
    }

    Point hand;
};

}  // namespace lumatile
