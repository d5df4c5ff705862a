#include "platform/simulated/SimulatedMouse.h"

#include <algorithm>
#include <utility>

namespace lumatile {

class SimulatedMouse::Tap final : public MouseTap {
public:
    explicit Tap(std::shared_ptr<Watcher> watcher) : watcher_(std::move(watcher)) {}

    void enable() override { watcher_->isEnabled = true; }

private:
    std::shared_ptr<Watcher> watcher_;
};

std::unique_ptr<MouseTap> SimulatedMouse::createTap(Mask mask, Handler handler) {
    masks_.push_back(mask);
    if (isRefusing_) {
        return nullptr;
    }
    const auto watcher = std::make_shared<Watcher>(Watcher{mask, std::move(handler)});
    watchers_.push_back(watcher);
    return std::make_unique<Tap>(watcher);
}

void SimulatedMouse::press(const Point& point, Grip grip) {
    at_ = point;
    isDown_ = true;
    input_.pressButton();
    gripped_ = programs_.topmostAt(screens_.toArrangement({point.x, point.y, 0, 0}).origin());
    grip_ = grip;
    if (gripped_) {
        programs_.focus(*gripped_);
    }
    tell(MouseEventType::leftMouseDown);
}

void SimulatedMouse::moveTo(const Point& point) {
    input_.touch();
    drag(point);
    if (isDown_) {
        tell(MouseEventType::leftMouseDragged);
    }
}

void SimulatedMouse::release() {
    isDown_ = false;
    gripped_.reset();
    input_.releaseButton();
    if (!std::exchange(isReleaseLost_, false)) {
        tell(MouseEventType::leftMouseUp);
    }
}

void SimulatedMouse::dragWithRightButton(const Point& from, const Point& to) {
    at_ = from;
    gripped_ = programs_.topmostAt(screens_.toArrangement({from.x, from.y, 0, 0}).origin());
    grip_ = Grip::move;
    input_.pressButton();
    drag(to);
    gripped_.reset();
    input_.releaseButton();
}

void SimulatedMouse::drag(const Point& to) {
    const SimulatedWindow* window = gripped_ ? programs_.find(*gripped_) : nullptr;
    if (window != nullptr) {
        const double dx = to.x - at_.x;
        const double dy = to.y - at_.y;
        Rect frame = window->geometry.current();
        if (grip_ == Grip::move) {
            windowManager_.moveByHand(*gripped_, frame.offsetBy(dx, dy));
        } else if (grip_ == Grip::resize) {
            frame.width += dx;
            frame.height += dy;
            windowManager_.moveByHand(*gripped_, frame);
        }
    }
    at_ = to;
}

void SimulatedMouse::disableTaps() {
    for (const std::weak_ptr<Watcher>& each : watchers_) {
        if (const std::shared_ptr<Watcher> watcher = each.lock()) {
            watcher->isEnabled = false;
            runLoop_.post([each] {
                if (const std::shared_ptr<Watcher> alive = each.lock()) {
                    alive->handler({MouseEventType::tapDisabled, {}});
                }
            });
        }
    }
    runLoop_.settle();
}

std::size_t SimulatedMouse::taps() const {
    return static_cast<std::size_t>(std::count_if(
        watchers_.begin(), watchers_.end(), [](const auto& each) { return !each.expired(); }));
}

void SimulatedMouse::tell(MouseEventType type) {
    std::erase_if(watchers_, [](const auto& each) { return each.expired(); });
    for (const std::weak_ptr<Watcher>& each : watchers_) {
        const std::shared_ptr<Watcher> watcher = each.lock();
        if (watcher && watcher->isEnabled && (watcher->mask & bit(type)) != 0) {
            runLoop_.post([each, event = MouseEvent{type, at_}] {
                if (const std::shared_ptr<Watcher> alive = each.lock()) {
                    alive->handler(event);
                }
            });
        }
    }
    runLoop_.settle();
}

}  // namespace lumatile
