#include "platform/x11/X11PointerTrail.h"

#include <algorithm>
#include <cstdint>
#include <span>

namespace lumatile {

namespace {

bool isBefore(const xcb_timecoord_t& record, xcb_timestamp_t time) {
    return static_cast<std::int32_t>(record.time - time) < 0;
}

/// A button leaves a record too, with nothing in it.
bool isButton(const xcb_timecoord_t& record) { return record.x == 0 && record.y == 0; }

/// An axis that did not take part in the movement is left out, which looks like the edge of the
/// screen: that it is only where the pointer was there before.
bool isWhole(const xcb_timecoord_t& record, const Point& known) {
    return (record.x != 0 || known.x == 0) && (record.y != 0 || known.y == 0);
}

}  // namespace

xcb_get_motion_events_cookie_t X11PointerTrail::ask(xcb_connection_t* connection, xcb_window_t root,
                                                    xcb_timestamp_t since) {
    return xcb_get_motion_events(connection, root, since, XCB_CURRENT_TIME);
}

X11PointerTrail::X11PointerTrail(xcb_connection_t* connection,
                                 xcb_get_motion_events_cookie_t cookie)
    : reply_(xcb_get_motion_events_reply(connection, cookie, nullptr)) {}

std::optional<Point> X11PointerTrail::placeAt(xcb_timestamp_t time, std::size_t laterButtons,
                                              const Point& known) const {
    if (!reply_) {
        return std::nullopt;
    }
    const std::span records(
        xcb_get_motion_events_events(reply_.get()),
        static_cast<std::size_t>(xcb_get_motion_events_events_length(reply_.get())));
    auto next = std::find_if(records.begin(), records.end(), [&](const xcb_timecoord_t& each) {
        return each.time != time && !isBefore(each, time);
    });
    // Movements of the same millisecond came before the button or after it; its own record tells.
    for (auto each = next; each != records.begin();) {
        --each;
        if (each->time == time && isButton(*each) && laterButtons-- == 0) {
            next = each;
            break;
        }
    }
    // The record of a movement says where the pointer was before it.
    next = std::find_if(next, records.end(), [&](const xcb_timecoord_t& each) {
        return !isButton(each) && isWhole(each, known);
    });
    return next != records.end()
               ? std::optional(Point{static_cast<double>(next->x), static_cast<double>(next->y)})
               : std::nullopt;
}

}  // namespace lumatile
