#include "platform/x11/X11ScreenList.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "platform/x11/X11Event.h"
#include "platform/x11/X11Property.h"
#include "platform/x11/X11Struts.h"

namespace lumatile {

namespace {

// More windows than any desktop has; a longer list is not a window manager's.
constexpr std::uint32_t mostWindows = 4096;
constexpr std::uint32_t mostWorkAreaNumbers = 4 * 256;

/// From root coordinates by way of the accessibility space to bottom-left and y upwards.
Rect inPlatformSpace(const Rect& rect, double primaryHeight) {
    return {rect.minX(), primaryHeight - rect.maxY(), rect.width, rect.height};
}

}  // namespace

X11ScreenList::X11ScreenList(X11Connection& connection, X11Monitors& monitors)
    : connection_(connection),
      monitors_(monitors),
      room_(connection),
      subscription_(connection.observe([this](const xcb_generic_event_t& event) { note(event); })) {
    connection_.selectRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE);
}

std::vector<PlatformScreen> X11ScreenList::screens() {
    connection_.readEvents();
    if (isStale_ || room_.isStale() || monitors_.changes() != monitorChanges_) {
        read();
    }
    if (connection_.isLost()) {
        return {};
    }
    return screens_;
}

Point X11ScreenList::origin() {
    connection_.readEvents();
    return monitors_.origin();
}

void X11ScreenList::note(const xcb_generic_event_t& event) {
    if (X11Event::type(event) != XCB_PROPERTY_NOTIFY) {
        return;
    }
    const auto& changed = X11Event::as<xcb_property_notify_event_t>(event);
    if (changed.window != connection_.root()) {
        return;
    }
    X11Atoms& atoms = connection_.atoms();
    const std::array names{atoms["_NET_CLIENT_LIST"], atoms["_NET_WORKAREA"],
                           atoms["_NET_CURRENT_DESKTOP"]};
    isStale_ = isStale_ || std::find(names.begin(), names.end(), changed.atom) != names.end();
}

void X11ScreenList::read() {
    isStale_ = false;
    monitorChanges_ = monitors_.changes();
    const std::vector<Rect> monitors = monitors_.rootRects();
    const std::vector<Rect> visible = readVisible(monitors);
    screens_.clear();
    for (std::size_t i = 0; i < monitors.size(); ++i) {
        const double primaryHeight = monitors.front().height;
        screens_.push_back({inPlatformSpace(monitors_.fromRoot(monitors[i]), primaryHeight),
                            inPlatformSpace(monitors_.fromRoot(visible[i]), primaryHeight)});
    }
}

std::vector<Rect> X11ScreenList::readVisible(const std::vector<Rect>& monitors) {
    xcb_connection_t* const server = connection_.get();
    X11Atoms& atoms = connection_.atoms();
    const auto ask = [&](std::string_view name, xcb_atom_t type, std::uint32_t mostNumbers) {
        return X11Property::ask(server, connection_.root(), atoms[name], type, mostNumbers);
    };
    const auto clientsCookie = ask("_NET_CLIENT_LIST", XCB_ATOM_WINDOW, mostWindows);
    const auto areasCookie = ask("_NET_WORKAREA", XCB_ATOM_CARDINAL, mostWorkAreaNumbers);
    const auto desktopCookie =
        ask("_NET_CURRENT_DESKTOP", XCB_ATOM_CARDINAL, X11Property::singleItem);
    const X11Property clients(server, clientsCookie);
    const X11Property areas(server, areasCookie);
    const X11Property desktop(server, desktopCookie);

    const std::vector<X11Strut> struts = room_.read(clients.items());
    std::vector<Rect> visible = monitors;
    if (clients.isList()) {
        const Size rootSize = monitors_.rootSize();
        for (Rect& rect : visible) {
            rect = monitorLessStruts(rect, rootSize, struts);
        }
    } else if (const auto area = workAreaOfDesktop(areas.items(), desktop.first().value_or(0))) {
        for (Rect& rect : visible) {
            rect = monitorInWorkArea(rect, *area);
        }
    }
    return visible;
}

}  // namespace lumatile
