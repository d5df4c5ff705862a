#include "Lumatile/MouseConductor.h"

#include <utility>

namespace lumatile {

MouseConductor::MouseConductor(std::shared_ptr<DragSnapController> controller,
                               MouseEventSource& platform, SystemLog& log)
    : controller_(std::move(controller)), platform_(platform), log_(log) {}

void MouseConductor::start() {
    std::unique_ptr<MouseTap> tap =
        platform_.createTap(mask, [conductor = weak_from_this()](const MouseEvent& event) {
            if (const std::shared_ptr<MouseConductor> alive = conductor.lock()) {
                alive->handle(event);
            }
        });
    if (!tap) {
        log_.write("MouseConductor", "failed to create event tap (Accessibility not granted?)");
        return;
    }
    tap_ = std::move(tap);
    tap_->enable();
}

void MouseConductor::stop() { tap_.reset(); }

void MouseConductor::handle(const MouseEvent& event) {
    switch (event.type) {
        case MouseEventType::leftMouseDown:
            controller_->dragBegan(event.location);
            break;
        case MouseEventType::leftMouseDragged:
            controller_->dragMoved(event.location);
            break;
        case MouseEventType::leftMouseUp:
            controller_->dragEnded();
            break;
        case MouseEventType::tapDisabled:
            if (tap_) {
                tap_->enable();
            }
            break;
    }
}

}  // namespace lumatile
