#pragma once

#include <memory>
#include <optional>
#include <string>
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
/// A move that the user takes back, by Escape, is told as a movement to the middle of a screen and
/// the release there, where nothing is dropped.
///
/// An event may be told long after it happened. What was pressed, and where it was then, is known
/// while the press is told.
class KWinMouseEventSource final : public MouseEventSource {
public:
    /// All outlive the source.
    KWinMouseEventSource(KWinChannel& channel, KWinScreenList& screens, KWinEdgeTiling& edgeTiling,
                         RunLoop& runLoop);

    std::unique_ptr<MouseTap> createTap(Mask mask, Handler handler) override;

    void setTakesDrops(bool takesDrops) override { edgeTiling_.hold(takesDrops); }

    /// Whether a window is being moved or resized, by which a held button is known here.
    bool isHeld() const { return isHeld_; }

    /// A window as it was when the button went down.
    struct Pressed {
        std::string id;
        Rect frame;  ///< KWin's space.
    };

    /// The window of the press that is being told; null at all other times.
    const Pressed* pressed() const { return telling_ ? &*telling_ : nullptr; }

private:
    class Tap;

    void note(const KWinEvent& event);
    void noteState();
    void add(MouseEventType type, const Point& place, std::optional<Pressed> pressed = {});
    void addNoDrop();
    void tellAll();

    KWinChannel& channel_;
    KWinScreenList& screens_;
    KWinEdgeTiling& edgeTiling_;
    RunLoop& runLoop_;
    ObserverList<const MouseEvent&> taps_;
    struct Untold {
        MouseEvent event;  ///< Its place in KWin's space.
        std::optional<Pressed> pressed;
    };
    std::vector<Untold> untold_;
    std::optional<Pressed> telling_;
    bool isHeld_ = false;
    bool isMove_ = false;
    KWinChannel::EventSubscription events_;
    KWinChannel::StateSubscription states_;
    Lifeline lifeline_;
};

}  // namespace lumatile
