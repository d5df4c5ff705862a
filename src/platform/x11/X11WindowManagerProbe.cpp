#include "platform/x11/X11WindowManagerProbe.h"

#include <algorithm>

#include "platform/x11/X11Event.h"
#include "platform/x11/X11ManagerSelection.h"
#include "platform/x11/X11Property.h"
#include "platform/x11/X11RootMessage.h"

namespace lumatile {

X11WindowManagerProbe::X11WindowManagerProbe(X11Connection& connection, X11WindowMirror& mirror)
    : connection_(connection),
      mirror_(mirror),
      request_(connection.atoms()["_NET_REQUEST_FRAME_EXTENTS"]),
      answer_(connection.atoms()["_NET_FRAME_EXTENTS"]),
      selection_(managerSelection(connection, "WM_S")),
      version_(connection.atoms()["VERSION"]),
      subscription_(connection.observe([this](const xcb_generic_event_t& event) { note(event); })) {
}

X11WindowManagerProbe::~X11WindowManagerProbe() {
    for (const xcb_window_t window : windows_) {
        xcb_destroy_window(connection_.get(), window);
    }
    xcb_flush(connection_.get());
}

bool X11WindowManagerProbe::takesExtentsRequests() {
    constexpr std::uint32_t longestSupportedList = 1024;
    xcb_connection_t* connection = connection_.get();
    return X11Property(connection, X11Property::ask(connection, connection_.root(),
                                                    connection_.atoms()["_NET_SUPPORTED"],
                                                    XCB_ATOM_ATOM, longestSupportedList))
        .has(request_);
}

void X11WindowManagerProbe::ask() {
    // A new window each time, or a late answer would be taken for that to a later question. It is
    // never mapped, and its own event mask sees the answer.
    const xcb_window_t window = xcb_generate_id(connection_.get());
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window, connection_.root(), -1, -1,
                      1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_EVENT_MASK, &events);
    windows_.push_back(window);
    isAnswered_ = false;
    if (takesExtentsRequests()) {
        sendRootMessage(connection_, window, request_, {});
    } else {
        xcb_convert_selection(connection_.get(), window, selection_, version_, version_,
                              XCB_CURRENT_TIME);
    }
}

void X11WindowManagerProbe::noteSilence() { silentSince_ = mirror_.windowManagerActivity(); }

bool X11WindowManagerProbe::isSilent() const {
    return silentSince_ == mirror_.windowManagerActivity();
}

void X11WindowManagerProbe::note(const xcb_generic_event_t& event) {
    const std::optional<xcb_window_t> window = answeredWindow(event);
    if (!window) {
        return;
    }
    const auto found = std::find(windows_.begin(), windows_.end(), *window);
    if (found == windows_.end()) {
        return;
    }
    isAnswered_ = isAnswered_ || *found == windows_.back();
    windows_.erase(found);
    xcb_destroy_window(connection_.get(), *window);
    mirror_.noteWindowManagerActivity();
}

std::optional<xcb_window_t> X11WindowManagerProbe::answeredWindow(
    const xcb_generic_event_t& event) const {
    if (X11Event::type(event) == XCB_PROPERTY_NOTIFY) {
        const auto& change = X11Event::as<xcb_property_notify_event_t>(event);
        if (change.atom == answer_) {
            return change.window;
        }
    }
    if (X11Event::type(event) == XCB_SELECTION_NOTIFY) {
        const auto& change = X11Event::as<xcb_selection_notify_event_t>(event);
        // Without an owner the server answers by itself, and with nothing.
        if (change.property != XCB_ATOM_NONE) {
            return change.requestor;
        }
    }
    return std::nullopt;
}

}  // namespace lumatile
