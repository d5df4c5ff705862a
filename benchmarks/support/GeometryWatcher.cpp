#include "benchmarks/support/GeometryWatcher.h"

#include <xcb/xtest.h>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::benchmark {

using desktop::Deadline;
using desktop::DesktopError;
using desktop::XReply;

namespace {

// The window below the root that `window` is in.
xcb_window_t topLevelOf(desktop::XClient& client, xcb_window_t window) {
    for (;;) {
        const XReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
            client.connection(), xcb_query_tree(client.connection(), window), nullptr));
        if (!tree) {
            throw DesktopError("the window to be watched is gone");
        }
        if (tree->parent == client.root()) {
            return window;
        }
        window = tree->parent;
    }
}

}  // namespace

GeometryWatcher::GeometryWatcher(const std::string& display, xcb_window_t window)
    : XClient(display), window_(window), frame_(topLevelOf(*this, window)) {
    if (frame_ == window_) {
        throw DesktopError("the window to be watched has no frame");
    }
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    for (const xcb_window_t each : {window_, frame_}) {
        xcb_change_window_attributes(connection(), each, XCB_CW_EVENT_MASK, &mask);
    }
    place_ = place();
}

GeometryWatcher::Place GeometryWatcher::place() {
    const auto askFrame = xcb_get_geometry(connection(), frame_);
    const auto askClient = xcb_get_geometry(connection(), window_);
    const XReply<xcb_get_geometry_reply_t> frame(
        xcb_get_geometry_reply(connection(), askFrame, nullptr));
    const XReply<xcb_get_geometry_reply_t> client(
        xcb_get_geometry_reply(connection(), askClient, nullptr));
    if (!frame || !client) {
        throw DesktopError("the watched window is gone");
    }
    return {{frame->x, frame->y, frame->width, frame->height}, client->width, client->height};
}

std::optional<double> GeometryWatcher::press(std::uint8_t key, const Place& target) {
    return arrivalAfter(XCB_KEY_PRESS, key, target);
}

std::optional<double> GeometryWatcher::release(const Place& target) {
    constexpr std::uint8_t leftButton = 1;
    return arrivalAfter(XCB_BUTTON_RELEASE, leftButton, target);
}

std::optional<double> GeometryWatcher::arrivalAfter(std::uint8_t type, std::uint8_t detail,
                                                    const Place& target) {
    roundTrip();
    place_ = place();
    if (place_ == target) {
        throw DesktopError("the watched window is at its target already");
    }
    target_ = target;
    arrival_.reset();
    const Clock::time_point begin = Clock::now();
    xcb_test_fake_input(connection(), type, detail, XCB_CURRENT_TIME, root(), 0, 0, 0);
    xcb_flush(connection());
    waitUntil([this] { return arrival_.has_value(); }, Deadline::in(std::chrono::seconds(5)));
    target_.reset();
    if (!arrival_) {
        return std::nullopt;
    }
    return std::chrono::duration<double, std::micro>(*arrival_ - begin).count();
}

void GeometryWatcher::handle(const xcb_generic_event_t& event) {
    // Not the window manager's own announcements to the client (marked as sent): they are made
    // before or after the fact.
    if (event.response_type != XCB_CONFIGURE_NOTIFY) {
        return;
    }
    const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
    if (configure.window == frame_) {
        place_.frame = {configure.x, configure.y, configure.width, configure.height};
    } else if (configure.window == window_) {
        place_.clientWidth = configure.width;
        place_.clientHeight = configure.height;
    }
    if (target_ && !arrival_ && place_ == *target_) {
        arrival_ = Clock::now();
    }
}

}  // namespace lumatile::benchmark
