#include "platform/x11/X11ScreenList.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/x11/X11Reply.h"

namespace lumatile {

namespace {

// More windows than any desktop has; a longer list is not a window manager's.
constexpr std::uint32_t mostWindows = 4096;
constexpr std::uint32_t mostStrutNumbers = 12;
constexpr std::uint32_t mostWorkAreaNumbers = 4 * 256;
constexpr std::uint8_t bitsPerNumber = 32;

using PropertyReply = X11Reply<xcb_get_property_reply_t>;

xcb_get_property_cookie_t ask(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property,
                              xcb_atom_t type, std::uint32_t mostNumbers) {
    return xcb_get_property(server, 0, window, property, type, 0, mostNumbers);
}

PropertyReply answer(xcb_connection_t* server, xcb_get_property_cookie_t cookie) {
    return PropertyReply(xcb_get_property_reply(server, cookie, nullptr));
}

/// The numbers of a property; absent when it is missing, of another type, or longer than asked for.
std::optional<std::span<const std::uint32_t>> numbersIn(const PropertyReply& reply,
                                                        xcb_atom_t type) {
    if (!reply || reply->type != type || reply->format != bitsPerNumber ||
        reply->bytes_after != 0) {
        return std::nullopt;
    }
    return std::span(static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get())),
                     reply->value_len);
}

/// From root coordinates by way of the accessibility space to bottom-left and y upwards.
Rect inPlatformSpace(const Rect& rect, double primaryHeight) {
    return {rect.minX(), primaryHeight - rect.maxY(), rect.width, rect.height};
}

}  // namespace

struct X11ScreenList::StrutQuestion {
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_property_cookie_t partial;
    xcb_get_property_cookie_t plain;
};

X11ScreenList::X11ScreenList(X11Connection& connection, X11Monitors& monitors)
    : connection_(connection), monitors_(monitors) {}

std::vector<X11ScreenList::StrutQuestion> X11ScreenList::askStruts(
    const std::vector<xcb_window_t>& windows) {
    xcb_connection_t* const server = connection_.get();
    const xcb_atom_t partialAtom = connection_.atoms()["_NET_WM_STRUT_PARTIAL"];
    const xcb_atom_t plainAtom = connection_.atoms()["_NET_WM_STRUT"];
    std::vector<StrutQuestion> questions;
    questions.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        questions.push_back({xcb_get_window_attributes(server, window),
                             ask(server, window, partialAtom, XCB_ATOM_CARDINAL, mostStrutNumbers),
                             ask(server, window, plainAtom, XCB_ATOM_CARDINAL, mostStrutNumbers)});
    }
    return questions;
}

std::vector<X11Strut> X11ScreenList::takeStruts(const std::vector<StrutQuestion>& questions) {
    xcb_connection_t* const server = connection_.get();
    std::vector<X11Strut> struts;
    for (const StrutQuestion& question : questions) {
        const X11Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(server, question.attributes, nullptr));
        const PropertyReply partial = answer(server, question.partial);
        const PropertyReply plain = answer(server, question.plain);
        if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE) {
            continue;  // Gone, or a panel that is put away and keeps no room.
        }
        auto numbers = numbersIn(partial, XCB_ATOM_CARDINAL);
        if (!numbers || numbers->empty()) {
            numbers = numbersIn(plain, XCB_ATOM_CARDINAL);
        }
        if (!numbers) {
            continue;
        }
        if (const auto strut = X11Strut::decoded(*numbers)) {
            struts.push_back(*strut);
        }
    }
    return struts;
}

std::vector<PlatformScreen> X11ScreenList::screens() {
    xcb_connection_t* const server = connection_.get();
    X11Atoms& atoms = connection_.atoms();
    const xcb_window_t root = connection_.root();
    const auto clientsCookie =
        ask(server, root, atoms["_NET_CLIENT_LIST"], XCB_ATOM_WINDOW, mostWindows);
    const auto areasCookie =
        ask(server, root, atoms["_NET_WORKAREA"], XCB_ATOM_CARDINAL, mostWorkAreaNumbers);
    const auto desktopCookie =
        ask(server, root, atoms["_NET_CURRENT_DESKTOP"], XCB_ATOM_CARDINAL, 1);
    const std::vector<StrutQuestion> strutQuestions = askStruts(lastWindows_);
    monitors_.invalidate();
    const std::vector<Rect> monitors = monitors_.rootRects();
    const PropertyReply clientsReply = answer(server, clientsCookie);
    const PropertyReply areasReply = answer(server, areasCookie);
    const PropertyReply desktopReply = answer(server, desktopCookie);
    std::vector<X11Strut> struts = takeStruts(strutQuestions);
    if (connection_.isLost() || monitors.empty()) {
        return {};
    }

    std::vector<Rect> visible = monitors;
    if (const auto clients = numbersIn(clientsReply, XCB_ATOM_WINDOW)) {
        std::vector<xcb_window_t> windows(clients->begin(), clients->end());
        if (windows != lastWindows_) {
            lastWindows_ = std::move(windows);
            struts = takeStruts(askStruts(lastWindows_));
        }
        const Size rootSize = monitors_.rootSize();
        for (Rect& rect : visible) {
            rect = monitorLessStruts(rect, rootSize, struts);
        }
    } else if (const auto areas = numbersIn(areasReply, XCB_ATOM_CARDINAL)) {
        const auto desktop = numbersIn(desktopReply, XCB_ATOM_CARDINAL);
        const std::uint32_t current = desktop && !desktop->empty() ? desktop->front() : 0;
        if (const auto area = workAreaOfDesktop(*areas, current)) {
            for (Rect& rect : visible) {
                rect = monitorInWorkArea(rect, *area);
            }
        }
    }

    const double primaryHeight = monitors.front().height;
    std::vector<PlatformScreen> screens;
    screens.reserve(monitors.size());
    for (std::size_t i = 0; i < monitors.size(); ++i) {
        screens.push_back({inPlatformSpace(monitors_.fromRoot(monitors[i]), primaryHeight),
                           inPlatformSpace(monitors_.fromRoot(visible[i]), primaryHeight)});
    }
    return screens;
}

}  // namespace lumatile
