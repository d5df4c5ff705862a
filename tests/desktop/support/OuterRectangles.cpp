#include "tests/desktop/support/OuterRectangles.h"

#include <algorithm>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/OuterFrame.h"

namespace lumatile::desktop {

namespace {

xcb_window_t topLevelOf(XClient& client, xcb_window_t window) {
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

void addDifferent(std::vector<PixelRect>& rects, const PixelRect& rect) {
    if (std::find(rects.begin(), rects.end(), rect) == rects.end()) {
        rects.push_back(rect);
    }
}

}  // namespace

OuterRectangles::OuterRectangles(const std::string& display, xcb_window_t window)
    : XClient(display), window_(window), topLevel_(topLevelOf(*this, window)) {
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    for (const xcb_window_t each : {window_, topLevel_}) {
        xcb_change_window_attributes(connection(), each, XCB_CW_EVENT_MASK, &mask);
    }
    forget();
}

PixelRect OuterRectangles::geometryOf(xcb_window_t window) {
    const XReply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection(), xcb_get_geometry(connection(), window), nullptr));
    if (!geometry) {
        throw DesktopError("the watched window is gone");
    }
    return {geometry->x, geometry->y, geometry->width, geometry->height};
}

void OuterRectangles::forget() {
    roundTrip();
    const PixelRect seen = outerFrame(*this, window_).value_or(PixelRect{});
    const PixelRect whole = geometryOf(topLevel_);
    inset_ = {seen.x - whole.x, seen.y - whole.y, whole.width - seen.width,
              whole.height - seen.height};
    const PixelRect client = geometryOf(window_);
    outer_ = {seen};
    clientSizes_ = {{0, 0, client.width, client.height}};
}

const std::vector<PixelRect>& OuterRectangles::outer() {
    roundTrip();
    return outer_;
}

const std::vector<PixelRect>& OuterRectangles::clientSizes() {
    roundTrip();
    return clientSizes_;
}

void OuterRectangles::handle(const xcb_generic_event_t& event) {
    // Not what the window manager tells the client (marked as sent): it comes beside the fact.
    if (event.response_type != XCB_CONFIGURE_NOTIFY) {
        return;
    }
    const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
    if (configure.window == topLevel_) {
        addDifferent(outer_, {configure.x + inset_.x, configure.y + inset_.y,
                              configure.width - inset_.width, configure.height - inset_.height});
    }
    if (configure.window == window_) {
        addDifferent(clientSizes_, {0, 0, configure.width, configure.height});
    }
}

std::string toString(const std::vector<PixelRect>& rects) {
    std::string text;
    for (const PixelRect& each : rects) {
        text += toString(each) + "; ";
    }
    return text;
}

}  // namespace lumatile::desktop
