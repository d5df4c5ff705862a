#include "platform/x11/X11WindowManagerProbe.h"

#include "platform/x11/X11Event.h"
#include "platform/x11/X11RootMessage.h"

namespace lumatile {

X11WindowManagerProbe::X11WindowManagerProbe(X11Connection& connection, X11WindowMirror& mirror)
    : connection_(connection),
      mirror_(mirror),
      request_(connection.atoms()["_NET_REQUEST_FRAME_EXTENTS"]),
      answer_(connection.atoms()["_NET_FRAME_EXTENTS"]),
      subscription_(connection.observe([this](const xcb_generic_event_t& event) { note(event); })) {
}

X11WindowManagerProbe::~X11WindowManagerProbe() {
    destroyWindow();
    xcb_flush(connection_.get());
}

void X11WindowManagerProbe::ask() {
    // A new window each time, or a late answer would be taken for that to a later question. It is
    // never mapped, and its own event mask sees the answer.
    destroyWindow();
    window_ = xcb_generate_id(connection_.get());
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window_, connection_.root(), -1, -1,
                      1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_EVENT_MASK, &events);
    sendRootMessage(connection_, window_, request_, {});
    isAnswered_ = false;
}

void X11WindowManagerProbe::noteSilence() { silentSince_ = mirror_.windowManagerActivity(); }

bool X11WindowManagerProbe::isSilent() const {
    return silentSince_ == mirror_.windowManagerActivity();
}

void X11WindowManagerProbe::note(const xcb_generic_event_t& event) {
    if (window_ == XCB_WINDOW_NONE || X11Event::type(event) != XCB_PROPERTY_NOTIFY) {
        return;
    }
    const auto& change = X11Event::as<xcb_property_notify_event_t>(event);
    if (change.window == window_ && change.atom == answer_) {
        isAnswered_ = true;
        destroyWindow();
        mirror_.noteWindowManagerActivity();
    }
}

void X11WindowManagerProbe::destroyWindow() {
    if (window_ != XCB_WINDOW_NONE) {
        xcb_destroy_window(connection_.get(), window_);
        window_ = XCB_WINDOW_NONE;
    }
}

}  // namespace lumatile
