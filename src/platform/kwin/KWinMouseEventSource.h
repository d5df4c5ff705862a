#pragma once

#include <memory>
#include <vector>

#include "base/Lifeline.h"
#include "base/ObserverList.h"
#include "platform/kwin/KWinChannel.h"
#include "platform/kwin/KWinEdgeTiling.h"
#include "platform/kwin/KWinScreenList.h"
#include "ports/MouseEventSource.h"
#include "ports/RunLoop.h"

namespace lumatile {

/// The mouse as far as KWin tells of it: while a window is moved. The beginning of a move is told
/// as the press, its end as the release. Resizing is not told.
///
/// A move that the user takes back, by Escape, is told as a movement to no screen and the release
/// there, so that nothing is dropped.
class KWinMouseEventSource final : public MouseEventSource {
public:
    /// All outlive the source.
    KWinMouseEventSource(KWinChannel& channel, KWinScreenList& screens, KWinEdgeTiling& edgeTiling,
                         RunLoop& runLoop);

    std::unique_ptr<MouseTap> createTap(Mask mask, Handler handler) override;

    void setTakesDrops(bool takesDrops) override { edgeTiling_.hold(takesDrops); }

    /// Whether a window is being moved or resized, by which a held button is known here.
    bool isHeld() const { return isHeld_; }

private:
    class Tap;

    void note(const KWinEvent& event);
    void noteState();
    void add(MouseEventType type, const Point& place);
    void tellAll();

    KWinChannel& channel_;
    KWinScreenList& screens_;
    KWinEdgeTiling& edgeTiling_;
    RunLoop& runLoop_;
    ObserverList<const MouseEvent&> taps_;
    std::vector<MouseEvent> untold_;
    bool isHeld_ = false;
    bool isMove_ = false;
    KWinChannel::EventSubscription events_;
    KWinChannel::StateSubscription states_;
    Lifeline lifeline_;
};

}  // namespace lumatile
