#include "platform/x11/X11Monitors.h"

#include <algorithm>
#include <iterator>

#include <xcb/randr.h>

#include "platform/x11/X11Event.h"
#include "platform/x11/X11Reply.h"

namespace lumatile {

namespace {

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

X11Monitors::X11Monitors(X11Connection& connection) : connection_(connection), randr_(connection) {
    // Monitors that are only declared (not driven by an output) change without any RandR event; the
    // server then tells that the root was configured.
    connection.selectRootEvents(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    subscription_ = connection.observe([this](const xcb_generic_event_t& event) {
        const bool isOfRoot =
            X11Event::type(event) == XCB_CONFIGURE_NOTIFY &&
            X11Event::as<xcb_configure_notify_event_t>(event).window == connection_.root();
        if (isOfRoot || randr_.isChange(event)) {
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
    if (randr_.knowsMonitors()) {
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
