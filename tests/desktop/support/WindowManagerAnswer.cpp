#include "tests/desktop/support/WindowManagerAnswer.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

void waitForWindowManager(XClient& client) {
    xcb_connection_t* const connection = client.connection();
    const xcb_window_t window = client.newWindowId();
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    // Never mapped, so it is nobody's window.
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, client.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    // One question only: metacity dies when the requestor of a selection is gone before the answer.
    const std::vector<std::uint32_t> supported = client.cardinals(client.root(), "_NET_SUPPORTED");
    const bool takesExtentsRequests =
        std::find(supported.begin(), supported.end(), client.atom("_NET_REQUEST_FRAME_EXTENTS")) !=
        supported.end();
    const std::string_view answer = takesExtentsRequests ? "_NET_FRAME_EXTENTS" : "VERSION";
    if (takesExtentsRequests) {
        client.ask(window, "_NET_REQUEST_FRAME_EXTENTS", {});
    } else {
        const xcb_atom_t version = client.atom("VERSION");
        xcb_convert_selection(connection, window, client.atom("WM_S0"), version, version,
                              XCB_CURRENT_TIME);
    }
    const bool isAnswered =
        XClient::waitUntil([&] { return !client.cardinals(window, answer).empty(); });
    xcb_destroy_window(connection, window);
    client.roundTrip();
    if (!isAnswered) {
        throw DesktopError("the window manager does not answer");
    }
}

}  // namespace lumatile::desktop
