#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <xcb/xcb.h>

#include "base/Lifeline.h"
#include "base/ObserverList.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Monitors.h"
#include "platform/x11/X11PointerTrail.h"
#include "platform/x11/X11RefreshRate.h"
#include "ports/MouseEventSource.h"
#include "ports/RunLoop.h"

namespace lumatile {

/// Watches the left button through the raw events of the input extension, which keep coming while
/// a window manager holds the pointer. Nothing is grabbed. Movements are asked for only while the
/// button is down; where the pointer is, is asked once for all events that have arrived together.
/// A press or a release that is dealt with late is told with the place that the pointer had then.
///
/// A mouse may tell of a thousand movements a second, of which nobody sees more than a screen's
/// pictures. The first one is told at once. From then on the pointer is looked at once a picture
/// until the button is let go, and movements are asked for only while it rests. A pointer that
/// another program moves tells of no movement: it is looked at from the moment at which a window
/// moves while the button is down, and once more at the release. Presses and releases are always
/// told at once, a release after the movement that led to it.
class X11MouseEventSource final : public MouseEventSource {
public:
    /// All of them outlive the platform.
    X11MouseEventSource(X11Connection& connection, X11Monitors& monitors, RunLoop& runLoop);
    X11MouseEventSource(const X11MouseEventSource&) = delete;
    X11MouseEventSource& operator=(const X11MouseEventSource&) = delete;
    ~X11MouseEventSource() override;

    /// Null where the server's input extension is missing or too old. Taps do not outlive the
    /// platform.
    std::unique_ptr<MouseTap> createTap(Mask mask, Handler handler) override;

private:
    enum class Kind : std::uint8_t { press, release, motion, look, mayHaveMoved, devicesChanged };

    struct Happening {
        Kind kind = Kind::motion;
        std::uint32_t button = 0;  ///< As the device numbers it.
        bool isNew = false;        ///< Happened after the pointer was asked for.
        xcb_timestamp_t time = 0;  ///< Of a button's event, by the server's clock.

        bool isButton() const { return kind == Kind::press || kind == Kind::release; }
    };

    /// What the server says of the pointer.
    struct Pointer {
        Point location;       ///< Root coordinates.
        bool isHeld = false;  ///< The left button.
        std::optional<X11PointerTrail> trail;
    };

    class Tap;

    void note(const xcb_generic_event_t& event);
    void noteMotion(bool isNew);
    void add(const Happening& happening);
    void deferTelling();
    void holdBack(std::vector<Happening> happenings);
    void tellAll();
    std::optional<Pointer> askPointer();
    void readMapping();
    std::vector<Happening> takeOld();
    Point placeOf(std::span<const Happening> happenings, const Pointer& pointer);
    void tell(const Happening& happening, const Point& location, bool isReleaseLost);
    void tellPress(const Point& location);
    void tellMovement(const Point& location);
    void tellRelease(const Point& location);
    void tell(MouseEventType type, const Point& location);
    bool hasMovedTo(const Point& location) const;
    void look(const Point& location);
    void startLooking();
    void stopLooking();
    bool isAtRest() const { return restingLooks_ > 1; }
    bool isLeft(std::uint32_t button) const;
    void select();

    X11Connection& connection_;
    X11Monitors& monitors_;
    RunLoop& runLoop_;
    X11RefreshRate refreshRate_;
    std::uint8_t extension_ = 0;  // Its major opcode; 0 where it is of no use.
    ObserverList<const MouseEvent&> taps_;
    int enabledTaps_ = 0;
    std::vector<Happening> happenings_;         // Not told yet.
    std::optional<std::uint32_t> question_;     // For the pointer, while its answer is waited for.
    std::vector<std::uint8_t> logicalButtons_;  // What each button of the device stands for.
    bool isHeldBack_ = false;                   // The next telling is for the turn after it.
    bool isMappingStale_ = true;
    bool isLeftDown_ = false;
    std::uint32_t selected_ = 0;
    Point told_;  // Where the pointer was when a press or a movement was told last.
    std::unique_ptr<RunLoopTimer> looking_;
    bool hasMoved_ = false;  // A movement has been seen since the last look.
    int restingLooks_ = 0;   // So many of the last looks found the pointer where it was before.
    X11Connection::Subscription subscription_;  // Its observer names the fields above.
    Lifeline lifeline_;
};

}  // namespace lumatile
