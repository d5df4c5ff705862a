#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "drag_snap/DragSnapHighlighting.h"

namespace lumatile {

/// The highlight of a drag's target, as the user sees it.
class SimulatedHighlight final : public DragSnapHighlighting {
public:
    void show(const Rect& frame) override {
        visible_ = frame;
        shown_.push_back(frame);
    }
    void hide() override { visible_.reset(); }

    /// Accessibility space; absent while nothing is shown.
    const std::optional<Rect>& visible() const { return visible_; }

    /// Everything that was shown so far, in order.
    const std::vector<Rect>& shown() const { return shown_; }

private:
    std::optional<Rect> visible_;
    std::vector<Rect> shown_;
};

}  // namespace lumatile
