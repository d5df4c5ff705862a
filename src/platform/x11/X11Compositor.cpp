#include "platform/x11/X11Compositor.h"

#include <utility>

#include <xcb/xfixes.h>

#include "platform/x11/X11Event.h"
#include "platform/x11/X11ManagerSelection.h"
#include "platform/x11/X11Reply.h"

namespace lumatile {

namespace {

// Version 2 has regions, with which windows let clicks through.
constexpr std::uint32_t neededVersion = 2;

/// The number of the extension's first event; -1 where the server lacks it. The server takes newer
/// requests only from clients that stated the version.
int startXFixes(const X11Connection& connection) {
    xcb_connection_t* const server = connection.get();
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(server, &xcb_xfixes_id);
    if (extension == nullptr || extension->present == 0) {
        return -1;
    }
    const X11Reply<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        server, xcb_xfixes_query_version(server, neededVersion, 0), nullptr));
    return version && version->major_version >= neededVersion ? int{extension->first_event} : -1;
}

}  // namespace

X11Compositor::X11Compositor(X11Connection& connection, std::function<void()> changed)
    : connection_(connection),
      changed_(std::move(changed)),
      selection_(managerSelection(connection, "_NET_WM_CM_S")),
      firstEvent_(startXFixes(connection)) {
    if (!canBeKnown()) {
        return;
    }
    subscription_ = connection.observe([this](const xcb_generic_event_t& event) { note(event); });
    // The owner is asked for after the events are selected, so no change falls in between.
    xcb_connection_t* const server = connection.get();
    xcb_xfixes_select_selection_input(server, connection.root(), selection_,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const X11Reply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        server, xcb_get_selection_owner(server, selection_), nullptr));
    isRunning_ = owner && owner->owner != XCB_WINDOW_NONE;
}

void X11Compositor::note(const xcb_generic_event_t& event) {
    if (X11Event::type(event) != firstEvent_ + XCB_XFIXES_SELECTION_NOTIFY) {
        return;
    }
    const auto& change = X11Event::as<xcb_xfixes_selection_notify_event_t>(event);
    if (change.selection != selection_) {
        return;
    }
    isRunning_ = change.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER &&
                 change.owner != XCB_WINDOW_NONE;
    connection_.defer(lifeline_.guard([this] { changed_(); }));
}

}  // namespace lumatile
