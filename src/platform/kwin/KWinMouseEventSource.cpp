#include "platform/kwin/KWinMouseEventSource.h"

#include <utility>

namespace lumatile {

class KWinMouseEventSource::Tap final : public MouseTap {
public:
    Tap(KWinMouseEventSource& source, Mask mask, Handler handler)
        : source_(source), mask_(mask), handler_(std::move(handler)) {}

    void enable() override {
        subscription_ = source_.taps_.add([mask = mask_, handler = handler_](const auto& event) {
            if (event.type == MouseEventType::tapDisabled || (mask & bit(event.type)) != 0) {
                handler(event);
            }
        });
    }

private:
    KWinMouseEventSource& source_;
    Mask mask_;
    Handler handler_;
    ObserverList<const MouseEvent&>::Subscription subscription_;
};

KWinMouseEventSource::KWinMouseEventSource(KWinChannel& channel, KWinScreenList& screens,
                                           KWinEdgeTiling& edgeTiling, RunLoop& runLoop)
    : channel_(channel),
      screens_(screens),
      edgeTiling_(edgeTiling),
      runLoop_(runLoop),
      events_(channel.observe([this](const KWinEvent& event) { note(event); })),
      states_(channel.observeState([this] { noteState(); })) {}

std::unique_ptr<MouseTap> KWinMouseEventSource::createTap(Mask mask, Handler handler) {
    return std::make_unique<Tap>(*this, mask, std::move(handler));
}

void KWinMouseEventSource::note(const KWinEvent& event) {
    if (const auto* began = std::get_if<KWinMoveBegan>(&event)) {
        isHeld_ = true;
        isMove_ = !began->isResize;
        const KWinWindow* window = channel_.mirrorSoFar().find(began->id);
        if (isMove_ && window != nullptr) {
            add(MouseEventType::leftMouseDown, began->place,
                Pressed{began->id, window->record.frame});
        }
    } else if (const auto* moved = std::get_if<KWinMoved>(&event)) {
        if (isHeld_ && isMove_) {
            add(MouseEventType::leftMouseDragged, moved->place);
        }
    } else if (const auto* ended = std::get_if<KWinMoveEnded>(&event)) {
        if (std::exchange(isHeld_, false) && isMove_) {
            if (ended->isTakenBack) {
                addNoDrop();
            } else {
                add(MouseEventType::leftMouseDragged, ended->place);
                add(MouseEventType::leftMouseUp, ended->place);
            }
        }
    }
}

/// Whoever watches the mouse does not wait for a release that nobody will tell.
void KWinMouseEventSource::noteState() {
    if (!channel_.isAnswering() && std::exchange(isHeld_, false) && isMove_) {
        addNoDrop();
    }
}

void KWinMouseEventSource::addNoDrop() {
    const std::vector<KWinScreen>& screens = channel_.mirrorSoFar().screens();
    const Point middle = screens.empty() ? Point{} : screens.front().area.center();
    add(MouseEventType::leftMouseDragged, middle);
    add(MouseEventType::leftMouseUp, middle);
}

void KWinMouseEventSource::add(MouseEventType type, const Point& place,
                               std::optional<Pressed> pressed) {
    if (untold_.empty()) {
        // Somebody may be waiting for a write just now.
        runLoop_.post(lifeline_.guard([this] { tellAll(); }));
    } else if (type == MouseEventType::leftMouseDragged && untold_.back().event.type == type) {
        untold_.pop_back();
    }
    untold_.push_back({{type, place}, std::move(pressed)});
}

void KWinMouseEventSource::tellAll() {
    for (Untold& untold : std::exchange(untold_, {})) {
        const Point origin = screens_.origin();
        telling_ = std::move(untold.pressed);
        taps_.notify({untold.event.type,
                      {untold.event.location.x - origin.x, untold.event.location.y - origin.y}});
        telling_.reset();
    }
}

}  // namespace lumatile
