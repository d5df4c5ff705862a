#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Monitors.h"
#include "ports/MouseEventSource.h"
#include "ports/RunLoop.h"

namespace lumatile {

/// Watches the left button through the raw events of the input extension, which keep coming while
/// a window manager holds the pointer. Nothing is grabbed. Movements are asked for only while the
/// button is down; where the pointer is, is asked once for all events that have arrived together.
///
/// A mouse may tell of a thousand movements a second, of which nobody sees more than a screen's
/// pictures. The first one is told at once. From then on no more of them are asked for, but the
/// pointer is looked at by a timer until it rests; only then movements wake the program up again.
/// Presses and releases are always told at once, a release after the movement that led to it.
class X11MouseEventSource final : public MouseEventSource {
public:
    /// Seconds between two looks at the pointer: as ordinary mice tell of their movements, and half
    /// a picture of a screen of 60 Hz, so that what follows the pointer is not seen to be late.
    static constexpr double lookInterval = 0.008;

    /// All of them outlive the platform.
    X11MouseEventSource(X11Connection& connection, X11Monitors& monitors, RunLoop& runLoop);
    X11MouseEventSource(const X11MouseEventSource&) = delete;
    X11MouseEventSource& operator=(const X11MouseEventSource&) = delete;
    ~X11MouseEventSource() override;

    /// Null where the server's input extension is missing or too old. Taps do not outlive the
    /// platform.
    std::unique_ptr<MouseTap> createTap(Mask mask, Handler handler) override;

private:
    enum class Kind : std::uint8_t { press, release, motion, look, devicesChanged };

    struct Happening {
        Kind kind = Kind::motion;
        std::uint32_t button = 0;  ///< As the device numbers it.
        bool isNew = false;        ///< Happened after the pointer was asked for.
    };
    struct Watcher {
        Mask mask;
        Handler handler;
        bool isEnabled = false;
    };
    class Tap;

    void note(const xcb_generic_event_t& event);
    void add(const Happening& happening);
    void deferTelling();
    void tellAll();
    void tell(const Happening& happening, const Point& location, bool isReleaseLost);
    void tellMovement(const Point& location);
    void tellRelease(const Point& location);
    void tell(MouseEventType type, const Point& location);
    void noteMotion(bool isNew);
    bool hasMovedTo(const Point& location) const;
    void look(const Point& location);
    void startLooking();
    void stopLooking();
    bool isLeft(std::uint32_t button) const;
    void select();
    bool isWanted() const;

    X11Connection& connection_;
    X11Monitors& monitors_;
    RunLoop& runLoop_;
    std::uint8_t extension_ = 0;  // Its major opcode; 0 where it is of no use.
    std::vector<std::weak_ptr<Watcher>> watchers_;
    std::vector<Happening> happenings_;         // Not told yet.
    std::optional<std::uint32_t> question_;     // For the pointer, while its answer is waited for.
    std::vector<std::uint8_t> logicalButtons_;  // What each button of the device stands for.
    bool isMappingStale_ = true;
    bool isLeftDown_ = false;
    std::uint32_t selected_ = 0;
    Point told_;  // Where the pointer was when a press or a movement was told last.
    std::unique_ptr<RunLoopTimer> looking_;
    bool hasMoved_ = false;   // A movement has been seen since the last look.
    bool isResting_ = false;  // The last look found the pointer where it was before.
    std::shared_ptr<X11MouseEventSource*> self_;  // Empty for what still runs when this is gone.
    X11Connection::Subscription subscription_;    // Last: its observer names the fields above.
};

}  // namespace lumatile
