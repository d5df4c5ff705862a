#include "tests/desktop/support/HighlightWatch.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "tests/desktop/support/OuterFrame.h"

namespace lumatile::desktop {

HighlightWatch::HighlightWatch(const std::string& display) : XClient(display) {
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection(), root(), XCB_CW_EVENT_MASK, &mask);
    roundTrip();
}

bool HighlightWatch::waitUntilAt(const PixelRect& wanted) {
    return waitUntil([&] { return isShown() && frame() == wanted; });
}

bool HighlightWatch::waitUntilHidden() {
    return waitUntil([&] { return !isShown(); });
}

bool HighlightWatch::isShown() {
    const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        connection(), xcb_get_window_attributes(connection(), window()), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

xcb_window_t HighlightWatch::window() {
    const XReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection(), xcb_query_tree(connection(), root()), nullptr));
    if (!tree) {
        return XCB_WINDOW_NONE;
    }
    const std::span children(xcb_query_tree_children(tree.get()), tree->children_len);
    const auto found = std::find_if(children.rbegin(), children.rend(),
                                    [this](xcb_window_t each) { return isHighlight(each); });
    return found == children.rend() ? xcb_window_t{XCB_WINDOW_NONE} : *found;
}

PixelRect HighlightWatch::frame() { return clientArea(*this, window()).value_or(PixelRect{}); }

bool HighlightWatch::isOverrideRedirect() {
    const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        connection(), xcb_get_window_attributes(connection(), window()), nullptr));
    return attributes && attributes->override_redirect != 0;
}

bool HighlightWatch::letsThrough(int x, int y) {
    const XReply<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(connection(), xcb_query_pointer(connection(), root()), nullptr));
    return pointer && pointer->root_x == x && pointer->root_y == y && pointer->child != window();
}

int HighlightWatch::timesShown() {
    roundTrip();
    return timesShown_;
}

void HighlightWatch::forget() {
    roundTrip();
    timesShown_ = 0;
}

void HighlightWatch::handle(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) == XCB_MAP_NOTIFY &&
        isHighlight(reinterpret_cast<const xcb_map_notify_event_t&>(event).window)) {
        ++timesShown_;
    }
}

bool HighlightWatch::isHighlight(xcb_window_t window) {
    constexpr std::string_view title = "Lumatile highlight";
    const XReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection(),
                               xcb_get_property(connection(), 0, window, atom("_NET_WM_NAME"),
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, 64),
                               nullptr));
    return reply &&
           title == std::string_view(
                        static_cast<const char*>(xcb_get_property_value(reply.get())),
                        static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
}

}  // namespace lumatile::desktop
