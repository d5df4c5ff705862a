#include "tests/desktop/support/WindowActivation.h"

#include <string>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/WindowManagerAnswer.h"

namespace lumatile::desktop {

void activateWindow(XClient& client, xcb_window_t window) {
    constexpr std::uint32_t fromPager = 2;
    // A window manager that is giving the focus to another window just now, as to one that has
    // appeared, may take a request without a time for one from before that.
    constexpr std::chrono::seconds patience{1};
    const Deadline deadline = Deadline::usual();
    do {
        client.ask(window, "_NET_ACTIVE_WINDOW", {fromPager, XCB_CURRENT_TIME, 0});
        // A slow window manager is not asked twice: kwin would take the second request for a deed
        // of the user's, later than anything that another program knows of. It has carried out the
        // request when it answers, and heard of the focus by its next answer; the window may also
        // have been the active one all the time, and was yet to be raised.
        waitForWindowManager(client);
        waitForWindowManager(client);
        const auto isActive = [&] {
            return client.cardinal(client.root(), "_NET_ACTIVE_WINDOW") == window;
        };
        if (XClient::waitUntil(isActive, Deadline::in(patience))) {
            return;
        }
    } while (!deadline.isOver());
    const XReply<xcb_get_input_focus_reply_t> focus(xcb_get_input_focus_reply(
        client.connection(), xcb_get_input_focus(client.connection()), nullptr));
    throw DesktopError("the window " + std::to_string(window) + " does not become active; it is " +
                       std::to_string(client.cardinal(client.root(), "_NET_ACTIVE_WINDOW")) +
                       ", and the focus has " + std::to_string(focus ? focus->focus : 0));
}

}  // namespace lumatile::desktop
