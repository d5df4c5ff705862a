#include "platform/x11/X11Tray.h"

#include <utility>

#include "platform/x11/X11Event.h"
#include "platform/x11/X11ManagerSelection.h"
#include "platform/x11/X11Reply.h"

namespace lumatile {

X11Tray::X11Tray(X11Connection& connection, std::function<void()> appeared)
    : connection_(connection),
      appeared_(std::move(appeared)),
      selection_(managerSelection(connection, "_NET_SYSTEM_TRAY_S")),
      manager_(connection.atoms()["MANAGER"]) {
    // A new manager of anything tells whoever listens on the root.
    connection.selectRootEvents(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    subscription_ = connection.observe([this](const xcb_generic_event_t& event) { note(event); });
}

bool X11Tray::isPresent() const {
    const X11Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection_.get(), xcb_get_selection_owner(connection_.get(), selection_), nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

void X11Tray::note(const xcb_generic_event_t& event) {
    if (X11Event::type(event) != XCB_CLIENT_MESSAGE) {
        return;
    }
    const auto& message = X11Event::as<xcb_client_message_event_t>(event);
    // Time, selection, owner.
    if (message.type != manager_ || message.data.data32[1] != selection_) {
        return;
    }
    connection_.defer(lifeline_.guard([this] { appeared_(); }));
}

}  // namespace lumatile
