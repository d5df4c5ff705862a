#include "platform/x11/X11RootFacts.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "platform/x11/X11Property.h"
#include "platform/x11/X11Reply.h"
#include "platform/x11/X11TopLevels.h"

namespace lumatile {

namespace {

constexpr std::uint32_t longestWindowList = 16384;

/// The managed windows, the topmost first, each once.
std::vector<xcb_window_t> order(std::span<const std::uint32_t> oldestFirst,
                                std::span<const std::uint32_t> bottomFirst, xcb_window_t root) {
    const std::unordered_set<xcb_window_t> managed(oldestFirst.begin(), oldestFirst.end());
    const std::unordered_set<xcb_window_t> placed(bottomFirst.begin(), bottomFirst.end());
    std::unordered_set<xcb_window_t> taken{XCB_WINDOW_NONE, root};
    std::vector<xcb_window_t> result;
    const auto take = [&](xcb_window_t id) {
        if (taken.insert(id).second) {
            result.push_back(id);
        }
    };
    // xfwm4 states the stacking order late; what is not in it yet is new and so on top.
    for (std::size_t index = oldestFirst.size(); index-- > 0;) {
        if (!placed.contains(oldestFirst[index])) {
            take(oldestFirst[index]);
        }
    }
    for (std::size_t index = bottomFirst.size(); index-- > 0;) {
        if (managed.contains(bottomFirst[index])) {
            take(bottomFirst[index]);
        }
    }
    return result;
}

}  // namespace

X11RootFacts::X11RootFacts(X11Connection& connection) : connection_(connection) {
    connection_.selectRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE);
}

X11RootFacts::Reading X11RootFacts::read() {
    isStale_ = false;
    xcb_connection_t* connection = connection_.get();
    X11Atoms& atoms = connection_.atoms();
    const auto ask = [&](std::string_view name, xcb_atom_t type, std::uint32_t length) {
        return X11Property::ask(connection, connection_.root(), atoms[name], type, length);
    };
    const auto list = ask("_NET_CLIENT_LIST", XCB_ATOM_WINDOW, longestWindowList);
    const auto stacking = ask("_NET_CLIENT_LIST_STACKING", XCB_ATOM_WINDOW, longestWindowList);
    const auto active = ask("_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, X11Property::singleItem);
    const auto windowManager =
        ask("_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, X11Property::singleItem);
    const auto desktop = ask("_NET_CURRENT_DESKTOP", XCB_ATOM_CARDINAL, X11Property::singleItem);
    const auto showing = ask("_NET_SHOWING_DESKTOP", XCB_ATOM_CARDINAL, X11Property::singleItem);
    const auto treeCookie = xcb_query_tree(connection, connection_.root());

    Reading reading;
    const X11Property managed(connection, list);
    reading.managed =
        order(managed.items(), X11Property(connection, stacking).items(), connection_.root());
    active_ = X11Property(connection, active).first().value_or(XCB_WINDOW_NONE);
    claim(X11Property(connection, windowManager).first().value_or(XCB_WINDOW_NONE));
    currentDesktop_ = X11Property(connection, desktop).first();
    isShowingDesktop_ = X11Property(connection, showing).first().value_or(0) != 0;
    if (const X11Reply<xcb_query_tree_reply_t> tree{
            xcb_query_tree_reply(connection, treeCookie, nullptr)}) {
        reading.children = X11TopLevels::childrenOf(*tree);
    }
    return reading;
}

void X11RootFacts::noteProperty(xcb_atom_t name) {
    X11Atoms& atoms = connection_.atoms();
    const std::array names{atoms["_NET_CLIENT_LIST"],         atoms["_NET_CLIENT_LIST_STACKING"],
                           atoms["_NET_ACTIVE_WINDOW"],       atoms["_NET_CURRENT_DESKTOP"],
                           atoms["_NET_SUPPORTING_WM_CHECK"], atoms["_NET_SHOWING_DESKTOP"]};
    if (std::find(names.begin(), names.end(), name) != names.end()) {
        isStale_ = true;
        ++activity_;
    }
}

void X11RootFacts::noteDestroyed(xcb_window_t window) {
    if (window == windowManager_) {
        windowManager_ = XCB_WINDOW_NONE;
    }
    if (window == claimed_) {
        claimed_ = XCB_WINDOW_NONE;
    }
}

void X11RootFacts::claim(xcb_window_t windowManager) {
    if (windowManager != windowManager_) {
        windowManager_ = XCB_WINDOW_NONE;
        claimed_ = windowManager;
    }
}

std::optional<xcb_get_property_cookie_t> X11RootFacts::askWindowManager() {
    if (claimed_ == XCB_WINDOW_NONE) {
        return std::nullopt;
    }
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_.get(), claimed_, XCB_CW_EVENT_MASK, &mask);
    return X11Property::ask(connection_.get(), claimed_,
                            connection_.atoms()["_NET_SUPPORTING_WM_CHECK"], XCB_ATOM_WINDOW, 1);
}

void X11RootFacts::takeWindowManager(xcb_get_property_cookie_t cookie) {
    // The window names itself; one that does not has taken over a dead one's id.
    const xcb_window_t claimed = std::exchange(claimed_, XCB_WINDOW_NONE);
    if (X11Property(connection_.get(), cookie).first() == claimed) {
        windowManager_ = claimed;
        ++activity_;
    }
}

}  // namespace lumatile
