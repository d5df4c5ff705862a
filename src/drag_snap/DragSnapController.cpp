#include "drag_snap/DragSnapController.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "geometry/Grid.h"

namespace lumatile {

namespace {

// The max edges are outside a frame: a pointer on one counts as being on its last half pixel.
constexpr double insideMaxEdge = 0.5;

// Pixels from which on an edge counts as moved.
constexpr double leastMove = 1;

Point clamped(const Point& point, const Rect& frame) {
    return {std::min(std::max(point.x, frame.minX()), frame.maxX() - insideMaxEdge),
            std::min(std::max(point.y, frame.minY()), frame.maxY() - insideMaxEdge)};
}

}  // namespace

DragSnapController::DragSnapController(std::weak_ptr<DragSnapHighlighting> highlighter,
                                       WindowUnder windowUnder, ScreenAt screenContext,
                                       Commands commands)
    : highlighter_(std::move(highlighter)),
      windowUnder_(std::move(windowUnder)),
      screenContext_(std::move(screenContext)),
      commands_(std::move(commands)) {}

void DragSnapController::dragBegan(const Point& at) {
    dragged_ = windowUnder_(at);
    startFrame_ = dragged_ ? dragged_->frame() : std::nullopt;
    state_ = dragged_ ? State::armed : State::idle;
    currentTarget_.reset();
}

void DragSnapController::dragMoved(const Point& to) {
    if (!tilingByEdgeDragEnabled || state_ == State::idle || !dragged_) {
        return;
    }
    const std::optional<ScreenContext> screen = screenContext_(to);
    if (!screen) {
        clearTarget();
        return;
    }
    const Point point = clamped(to, screen->visibleFrame);
    if (!isNearEdge(point, screen->visibleFrame)) {
        clearTarget();
        return;
    }
    const std::optional<SnapCommand> command =
        resolver_.resolve(point, screen->visibleFrame, screen->orientation, commands_());
    if (!command) {
        clearTarget();
        return;
    }
    if (state_ == State::armed) {
        if (!isMovingNotResizing()) {
            return;
        }
        state_ = State::dragging;
    }
    const Rect frame = Grid::rect(command->targetArea(), screen->visibleFrame, screen->orientation);
    if (currentTarget_ && currentTarget_->frame == frame) {
        return;
    }
    currentTarget_ = Target{*command, frame, *screen};
    if (const std::shared_ptr<DragSnapHighlighting> highlighter = highlighter_.lock()) {
        highlighter->show(frame);
    }
}

void DragSnapController::dragEnded() {
    if (state_ == State::dragging && dragged_ && currentTarget_) {
        // The window system may come back into this while it carries the drop out.
        const Target target = *currentTarget_;
        const std::shared_ptr<WindowControlling> window = dragged_;
        const Rect frame = adjustTarget ? adjustTarget(target.frame, target.screen) : target.frame;
        window->setFrame(frame);
        if (onSnap) {
            onSnap(window, frame);
        }
    }
    resetDrag();
}

std::optional<Rect> DragSnapController::currentTarget() const {
    return currentTarget_ ? std::optional(currentTarget_->frame) : std::nullopt;
}

bool DragSnapController::isNearEdge(const Point& point, const Rect& frame) {
    return point.x - frame.minX() <= edgeThreshold || frame.maxX() - point.x <= edgeThreshold ||
           point.y - frame.minY() <= edgeThreshold || frame.maxY() - point.y <= edgeThreshold;
}

bool DragSnapController::isMovingNotResizing() const {
    const std::optional<Rect> current = dragged_->frame();
    if (!startFrame_ || !current) {
        return false;
    }
    const bool moved = std::abs(current->minX() - startFrame_->minX()) >= leastMove ||
                       std::abs(current->minY() - startFrame_->minY()) >= leastMove;
    const bool resized = std::abs(current->width - startFrame_->width) >= leastMove ||
                         std::abs(current->height - startFrame_->height) >= leastMove;
    return moved && !resized;
}

void DragSnapController::clearTarget() {
    if (!currentTarget_) {
        return;
    }
    currentTarget_.reset();
    if (const std::shared_ptr<DragSnapHighlighting> highlighter = highlighter_.lock()) {
        highlighter->hide();
    }
}

void DragSnapController::resetDrag() {
    if (const std::shared_ptr<DragSnapHighlighting> highlighter = highlighter_.lock()) {
        highlighter->hide();
    }
    state_ = State::idle;
    dragged_.reset();
    startFrame_.reset();
    currentTarget_.reset();
}

}  // namespace lumatile
