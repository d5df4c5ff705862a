#include "tests/desktop/support/DesktopObserver.h"

#include <algorithm>
#include <ostream>
#include <string_view>

namespace lumatile::desktop {

std::ostream& operator<<(std::ostream& stream, const RootMessage& message) {
    stream << message.type << "(0x" << std::hex << message.window << std::dec;
    for (const std::uint32_t item : message.data) {
        stream << ", " << static_cast<std::int32_t>(item);
    }
    return stream << ")";
}

DesktopObserver::DesktopObserver(const std::string& display) : XClient(display) {
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection(), root(), XCB_CW_EVENT_MASK, &mask);
    roundTrip();
}

void DesktopObserver::handle(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_CLIENT_MESSAGE) {
        return;
    }
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (message.format != 32) {
        return;
    }
    RootMessage heard{message.window, atomName(message.type), {}};
    std::copy_n(static_cast<const std::uint32_t*>(message.data.data32), heard.data.size(),
                heard.data.begin());
    messages_.push_back(heard);
}

const std::vector<RootMessage>& DesktopObserver::messages() {
    roundTrip();
    return messages_;
}

std::vector<RootMessage> DesktopObserver::messages(xcb_window_t window, const std::string& type) {
    std::vector<RootMessage> result;
    for (const RootMessage& message : messages()) {
        if (message.window == window && (type.empty() || message.type == type)) {
            result.push_back(message);
        }
    }
    return result;
}

void DesktopObserver::forget() {
    roundTrip();
    messages_.clear();
}

xcb_window_t DesktopObserver::activeWindow() { return cardinal(root(), "_NET_ACTIVE_WINDOW"); }

xcb_window_t DesktopObserver::windowOfClass(const std::string& windowClass) {
    for (const xcb_window_t window : cardinals(root(), "_NET_CLIENT_LIST")) {
        const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
            connection(),
            xcb_get_property(connection(), 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 1024),
            nullptr));
        if (!reply) {
            continue;
        }
        // Instance and class, each ended by a zero byte.
        const std::string_view text(
            static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
        const std::size_t middle = text.find('\0');
        if (middle == std::string_view::npos) {
            continue;
        }
        std::string_view named = text.substr(middle + 1);
        named = named.substr(0, named.find('\0'));
        if (named == windowClass) {
            return window;
        }
    }
    return XCB_WINDOW_NONE;
}

xcb_window_t DesktopObserver::unmanagedWindowOf(pid_t pid) {
    const XReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection(), xcb_query_tree(connection(), root()), nullptr));
    if (!tree) {
        return XCB_WINDOW_NONE;
    }
    const xcb_window_t* const first = xcb_query_tree_children(tree.get());
    const xcb_window_t* const last = first + xcb_query_tree_children_length(tree.get());
    const auto* const found = std::find_if(first, last, [&](xcb_window_t window) {
        const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            connection(), xcb_get_window_attributes(connection(), window), nullptr));
        return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
               cardinal(window, "_NET_WM_PID") == static_cast<std::uint32_t>(pid);
    });
    return found == last ? xcb_window_t{XCB_WINDOW_NONE} : *found;
}

}  // namespace lumatile::desktop
