#include "platform/x11/X11Translucency.h"

#include "platform/x11/X11ManagerSelection.h"
#include "platform/x11/X11Reply.h"

namespace lumatile {

X11Translucency::X11Translucency(X11Connection& connection)
    : connection_(connection), selection_(managerSelection(connection, "_NET_WM_CM_S")) {}

bool X11Translucency::isAvailable() {
    const X11Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection_.get(), xcb_get_selection_owner(connection_.get(), selection_), nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

}  // namespace lumatile
