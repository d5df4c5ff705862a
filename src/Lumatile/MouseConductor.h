#pragma once

#include <memory>

#include "drag_snap/DragSnapController.h"
#include "ports/MouseEventSource.h"
#include "ports/SystemLog.h"

namespace lumatile {

/// Tells the drag controller what the left button does. Must be owned by a shared pointer: it holds
/// on to itself while it tells.
class MouseConductor : public std::enable_shared_from_this<MouseConductor> {
public:
    /// Press, release and drag of the left button; nothing else is watched.
    static constexpr MouseEventSource::Mask mask =
        MouseEventSource::bit(MouseEventType::leftMouseDown) |
        MouseEventSource::bit(MouseEventType::leftMouseUp) |
        MouseEventSource::bit(MouseEventType::leftMouseDragged);

    /// @param platform outlives it, as the log does
    MouseConductor(std::shared_ptr<DragSnapController> controller, MouseEventSource& platform,
                   SystemLog& log);
    MouseConductor(const MouseConductor&) = delete;
    MouseConductor& operator=(const MouseConductor&) = delete;
    ~MouseConductor() = default;

    /// Where the mouse cannot be watched, one line in the log says so, and dragging does nothing;
    /// a tap of an earlier start goes on.
    void start();

    /// Harmless when it has not been started.
    void stop();

    bool isStarted() const { return tap_ != nullptr; }

private:
    void handle(const MouseEvent& event);

    std::shared_ptr<DragSnapController> controller_;
    MouseEventSource& platform_;
    SystemLog& log_;
    std::unique_ptr<MouseTap> tap_;
};

}  // namespace lumatile
