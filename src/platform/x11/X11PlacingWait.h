#pragma once

#include <cstdint>
#include <optional>

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Extents.h"
#include "platform/x11/X11PixelRect.h"
#include "platform/x11/X11PlacingOrder.h"
#include "platform/x11/X11Window.h"
#include "platform/x11/X11WindowManagerProbe.h"
#include "platform/x11/X11WindowMirror.h"
#include "platform/x11/X11WindowRequests.h"

namespace lumatile {

/// The waiting for what a window manager makes of one order. It ends as soon as the server reports
/// the new geometry; when the window manager has its own idea, as soon as it has dealt with the
/// message; and at the latest after the time-out. Meanwhile the message is sent anew where the
/// window's decoration has changed with it.
class X11PlacingWait {
public:
    using Clock = X11Connection::Clock;

    /// What a waiting works with; all of it outlives the waiting.
    struct Services {
        X11Connection& connection;
        X11WindowMirror& mirror;
        X11WindowManagerProbe& probe;
        X11WindowRequests& requests;
    };

    /// How long each step of a window manager is waited for.
    struct Patience {
        /// An answer often comes in several steps, with the drawing of the frame between them. When
        /// the window is not where it should be so long after the last of them, the window manager
        /// is asked whether it has its own idea.
        Clock::duration settling;
        /// For the last question when it has its own idea: far more than a living one takes.
        Clock::duration probe;

        /// @param longest seconds that a writing waits at most
        static Patience of(double longest);
    };

    /// Begins before the messages are sent.
    /// @param timeout of the whole waiting
    X11PlacingWait(const Services& services, const Patience& patience, const X11Window& window,
                   const X11PlacingOrder& order, Clock::duration timeout);

    /// Asks the window manager at once whether it has dealt with everything so far, as is known to
    /// be worth while when it had its own idea the last time.
    void probe();

    /// Waits.
    /// @return whether the window came to be what the order says; false also when it is gone
    bool await();

private:
    bool isConfirmed(const X11Window& window);
    bool isGivenUp(X11Window& window);
    void repeatWhereNeeded(const X11Window& window);

    Services services_;
    Patience patience_;
    xcb_window_t id_;
    std::uint64_t serial_;
    X11PlacingOrder order_;

    Clock::time_point start_;
    Clock::time_point deadline_;
    std::uint64_t answersBefore_;
    std::uint64_t tellingsBefore_;
    X11PixelRect outerBefore_;
    X11Extents shadowBefore_;

    Clock::time_point now_;
    Clock::time_point until_;  // When to look again without an event.
    X11PlaceRequest sent_;
    int repeats_ = 0;
    std::optional<Clock::time_point> probedAt_;  // Since the last message.
};

}  // namespace lumatile
