#include "platform/x11/X11Monitors.h"

#include <algorithm>
#include <iterator>

#include <xcb/randr.h>

#include "platform/x11/X11Reply.h"

namespace lumatile {

namespace {

constexpr std::uint8_t eventTypeMask = 0x7f;  // Without the mark of an event sent by a client.

/// Presence of RandR with monitors, and its events selected. The version must be asked for in any
/// case: the server sends the newer events only to clients that stated it.
bool startRandR(X11Connection& connection) {
    xcb_connection_t* const server = connection.get();
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(server, &xcb_randr_id);
    if (extension == nullptr || extension->present == 0) {
        return false;
    }
    const X11Reply<xcb_randr_query_version_reply_t> version(
        xcb_randr_query_version_reply(server, xcb_randr_query_version(server, 1, 5), nullptr));
    if (!version || version->major_version < 1) {
        return false;
    }
    xcb_randr_select_input(server, connection.root(),
                           XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                               XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    return version->major_version > 1 || version->minor_version >= 5;
}

/// Active monitors, primary first, each place once.
std::vector<Rect> monitorsIn(const xcb_randr_get_monitors_reply_t& reply) {
    std::vector<Rect> rects;
    bool primaryFound = false;
    for (auto monitors = xcb_randr_get_monitors_monitors_iterator(&reply); monitors.rem > 0;
         xcb_randr_monitor_info_next(&monitors)) {
        const xcb_randr_monitor_info_t& monitor = *monitors.data;
        const Rect rect{static_cast<double>(monitor.x), static_cast<double>(monitor.y),
                        static_cast<double>(monitor.width), static_cast<double>(monitor.height)};
        if (monitor.width == 0 || monitor.height == 0) {
            continue;
        }
        const bool isPrimary = monitor.primary != 0 && !primaryFound;
        primaryFound = primaryFound || isPrimary;
        const auto same = std::find(rects.begin(), rects.end(), rect);
        const auto place = same != rects.end() ? same : rects.insert(rects.end(), rect);
        if (isPrimary) {
            std::rotate(rects.begin(), place, std::next(place));
        }
    }
    return rects;
}

}  // namespace

X11Monitors::X11Monitors(X11Connection& connection)
    : connection_(connection), knowsMonitors_(startRandR(connection)) {
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(connection.get(), &xcb_randr_id);
    const bool hasRandR = extension != nullptr && extension->present != 0;
    const int firstRandREvent = hasRandR ? extension->first_event : -1;
    // Monitors that are only declared (not driven by an output) change without any RandR event; the
    // server then tells that the root was configured.
    connection.selectRootEvents(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    subscription_ = connection.observe([this, firstRandREvent](const xcb_generic_event_t& event) {
        const int type = event.response_type & eventTypeMask;
        if (type == XCB_CONFIGURE_NOTIFY) {
            const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
            if (configure.window == connection_.root()) {
                stale_ = true;
            }
        } else if (firstRandREvent >= 0 &&
                   (type == firstRandREvent + XCB_RANDR_SCREEN_CHANGE_NOTIFY ||
                    type == firstRandREvent + XCB_RANDR_NOTIFY)) {
            stale_ = true;
        }
    });
}

void X11Monitors::refresh() {
    if (stale_) {
        readMonitors();
    }
}

void X11Monitors::readMonitors() {
    xcb_connection_t* const server = connection_.get();
    const xcb_get_geometry_cookie_t geometryCookie = xcb_get_geometry(server, connection_.root());
    std::vector<Rect> rects;
    if (knowsMonitors_) {
        const X11Reply<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
            server, xcb_randr_get_monitors(server, connection_.root(), 1), nullptr));
        if (reply) {
            rects = monitorsIn(*reply);
        }
    }
    const X11Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(server, geometryCookie, nullptr));
    if (!geometry) {
        return;  // The server is gone; what was known last stays.
    }
    const Size rootSize{static_cast<double>(geometry->width),
                        static_cast<double>(geometry->height)};
    if (rects.empty()) {
        rects.push_back({0, 0, rootSize.width, rootSize.height});
    }
    stale_ = false;
    if (rects != rootRects_ || rootSize != rootSize_) {
        rootRects_ = std::move(rects);
        rootSize_ = rootSize;
        ++changes_;
    }
}

const std::vector<Rect>& X11Monitors::rootRects() {
    refresh();
    return rootRects_;
}

Size X11Monitors::rootSize() {
    refresh();
    return rootSize_;
}

std::uint64_t X11Monitors::changes() {
    refresh();
    return changes_;
}

Point X11Monitors::origin() {
    refresh();
    return rootRects_.empty() ? Point{} : rootRects_.front().origin();
}

Point X11Monitors::fromRoot(const Point& point) {
    const Point zero = origin();
    return {point.x - zero.x, point.y - zero.y};
}

Point X11Monitors::toRoot(const Point& point) {
    const Point zero = origin();
    return {point.x + zero.x, point.y + zero.y};
}

Rect X11Monitors::fromRoot(const Rect& rect) {
    const Point zero = origin();
    return rect.offsetBy(-zero.x, -zero.y);
}

Rect X11Monitors::toRoot(const Rect& rect) {
    const Point zero = origin();
    return rect.offsetBy(zero.x, zero.y);
}

}  // namespace lumatile
