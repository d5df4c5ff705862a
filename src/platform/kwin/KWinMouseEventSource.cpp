#include "platform/kwin/KWinMouseEventSource.h"

#include <utility>

namespace lumatile {

namespace {

/// On no screen that there could be.
constexpr Point nowhere{-2 * KWinReport::farthest, -2 * KWinReport::farthest};

}  // namespace

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
        if (isMove_) {
            add(MouseEventType::leftMouseDown, began->place);
        }
    } else if (const auto* moved = std::get_if<KWinMoved>(&event)) {
        if (isHeld_ && isMove_) {
            add(MouseEventType::leftMouseDragged, moved->place);
        }
    } else if (const auto* ended = std::get_if<KWinMoveEnded>(&event)) {
        if (std::exchange(isHeld_, false) && isMove_) {
            add(MouseEventType::leftMouseDragged, ended->isTakenBack ? nowhere : ended->place);
            add(MouseEventType::leftMouseUp, ended->isTakenBack ? nowhere : ended->place);
        }
    }
}

/// Whoever watches the mouse does not wait for a release that nobody will tell.
void KWinMouseEventSource::noteState() {
    if (!channel_.isAnswering() && std::exchange(isHeld_, false) && isMove_) {
        add(MouseEventType::leftMouseDragged, nowhere);
        add(MouseEventType::leftMouseUp, nowhere);
    }
}

void KWinMouseEventSource::add(MouseEventType type, const Point& place) {
    if (untold_.empty()) {
        // Somebody may be waiting for a write just now.
        runLoop_.post(lifeline_.guard([this] { tellAll(); }));
    } else if (type == MouseEventType::leftMouseDragged && untold_.back().type == type) {
        untold_.pop_back();
    }
    const Point origin = screens_.origin();
    untold_.push_back({type, {place.x - origin.x, place.y - origin.y}});
}

void KWinMouseEventSource::tellAll() {
    for (const MouseEvent& event : std::exchange(untold_, {})) {
        taps_.notify(event);
    }
}

}  // namespace lumatile
