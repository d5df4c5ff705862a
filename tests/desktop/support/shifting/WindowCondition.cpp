#include "tests/desktop/support/shifting/WindowCondition.h"

#include <algorithm>
#include <ostream>
#include <string_view>

namespace lumatile::desktop {

namespace {

void put(std::ostream& stream, std::string_view name, const std::vector<std::uint32_t>& items) {
    stream << name << ":";
    for (const std::uint32_t item : items) {
        stream << " " << item;
    }
    stream << "; ";
}

}  // namespace

WindowCondition WindowCondition::of(XClient& client, xcb_window_t window) {
    WindowCondition condition;
    condition.states = client.cardinals(window, "_NET_WM_STATE");
    std::erase(condition.states, client.atom("_NET_WM_STATE_FOCUSED"));
    std::sort(condition.states.begin(), condition.states.end());
    // Its second item, an icon, is nothing to go by: xfwm4 leaves it to chance.
    condition.iconic = client.cardinal(window, "WM_STATE");
    condition.desktop = client.cardinals(window, "_NET_WM_DESKTOP");
    const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        client.connection(), xcb_get_window_attributes(client.connection(), window), nullptr));
    condition.mapState = attributes ? attributes->map_state : -1;
    return condition;
}

std::ostream& operator<<(std::ostream& stream, const WindowCondition& condition) {
    put(stream, "states", condition.states);
    put(stream, "WM_STATE", {condition.iconic});
    put(stream, "desktop", condition.desktop);
    return stream << "map state: " << condition.mapState;
}

DesktopCondition DesktopCondition::of(XClient& client) {
    // xfwm4 writes a second item into the active window, which means nothing.
    const std::uint32_t active = client.cardinal(client.root(), "_NET_ACTIVE_WINDOW");
    return {client.cardinals(client.root(), "_NET_CLIENT_LIST_STACKING"), active,
            client.cardinals(client.root(), "_NET_CURRENT_DESKTOP")};
}

std::ostream& operator<<(std::ostream& stream, const DesktopCondition& condition) {
    put(stream, "stacking", condition.stacking);
    put(stream, "active", {condition.active});
    put(stream, "current desktop", condition.currentDesktop);
    return stream;
}

}  // namespace lumatile::desktop
