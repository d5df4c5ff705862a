#pragma once

#include <cstddef>
#include <optional>

#include <xcb/xcb.h>

#include "geometry/Point.h"
#include "platform/x11/X11Reply.h"

namespace lumatile {

/// Where the pointer has been of late: the server keeps its last movements. A button's event says
/// when the button went down and not where, and by the time at which the event is dealt with the
/// pointer may be elsewhere.
class X11PointerTrail {
public:
    /// @param since the server's time of the first event that matters
    static xcb_get_motion_events_cookie_t ask(xcb_connection_t* connection, xcb_window_t root,
                                              xcb_timestamp_t since);

    /// Waits for the answer.
    X11PointerTrail(xcb_connection_t* connection, xcb_get_motion_events_cookie_t cookie);

    /// Root coordinates of the pointer at a button's event; nothing when it has not moved since, or
    /// when the server does not tell.
    /// @param laterButtons so many events of buttons have the same time and came after it
    /// @param known where the pointer was when it was looked at last
    std::optional<Point> placeAt(xcb_timestamp_t time, std::size_t laterButtons,
                                 const Point& known) const;

private:
    X11Reply<xcb_get_motion_events_reply_t> reply_;
};

}  // namespace lumatile
