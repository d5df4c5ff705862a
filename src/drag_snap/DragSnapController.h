#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "commands/SnapCommand.h"
#include "drag_snap/ActivationResolver.h"
#include "drag_snap/DragSnapHighlighting.h"
#include "drag_snap/ScreenContext.h"
#include "geometry/Point.h"
#include "geometry/Rect.h"
#include "windows/WindowControlling.h"

namespace lumatile {

/// Snaps windows that the user drags to an edge of the screen. It is told when the button goes
/// down, the pointer moves and the button comes up; it shows where the window would land, and puts
/// it there on release. All points and frames are in the accessibility space.
class DragSnapController {
public:
    enum class State : std::uint8_t {
        idle,
        armed,    ///< The button is down on a window that has not been moved so far.
        dragging  ///< The window is being moved.
    };

    /// How close to an edge of the visible frame the pointer must come, pixels.
    static constexpr double edgeThreshold = 8;

    using WindowUnder = std::function<std::shared_ptr<WindowControlling>(const Point&)>;
    using ScreenAt = std::function<std::optional<ScreenContext>(const Point&)>;
    using Commands = std::function<const std::vector<SnapCommand>&()>;

    /// @param highlighter not owned; nothing is shown once it is gone
    /// @param windowUnder the window that a press at a point grabs, null when it grabs none
    /// @param screenContext the screen under a point
    /// @param commands the present commands
    DragSnapController(std::weak_ptr<DragSnapHighlighting> highlighter, WindowUnder windowUnder,
                       ScreenAt screenContext, Commands commands);
    DragSnapController(const DragSnapController&) = delete;
    DragSnapController& operator=(const DragSnapController&) = delete;
    ~DragSnapController() = default;

    /// Called when a drop has been carried out, with the frame that was set.
    std::function<void(const std::shared_ptr<WindowControlling>&, const Rect&)> onSnap;

    /// The last change to the frame of a drop before it is set.
    std::function<Rect(const Rect&, const ScreenContext&)> adjustTarget;

    /// The switch; while it is off a drag shows and does nothing.
    bool tilingByEdgeDragEnabled = true;

    void dragBegan(const Point& at);
    void dragMoved(const Point& to);
    void dragEnded();

    /// Ends a drag under way without a snap.
    void cancel() { resetDrag(); }

    State state() const { return state_; }

    /// Where a release would put the window; absent when nowhere.
    std::optional<Rect> currentTarget() const;

private:
    struct Target {
        SnapCommand command;
        Rect frame;
        ScreenContext screen;
    };

    static bool isNearEdge(const Point& point, const Rect& frame);
    bool isMovingNotResizing() const;
    void clearTarget();
    void resetDrag();

    ActivationResolver resolver_;
    std::weak_ptr<DragSnapHighlighting> highlighter_;
    WindowUnder windowUnder_;
    ScreenAt screenContext_;
    Commands commands_;
    State state_ = State::idle;
    std::shared_ptr<WindowControlling> dragged_;
    std::optional<Rect> startFrame_;
    std::optional<Target> currentTarget_;
};

}  // namespace lumatile
