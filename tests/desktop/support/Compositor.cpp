#include "tests/desktop/support/Compositor.h"

#include <signal.h>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

Compositor::Compositor(PrivateSession& session, const std::vector<std::string>& further) {
    // No settings of the machine's own, and no use of graphics hardware.
    std::vector<std::string> command = {"picom", "--backend", "xrender", "--config", "/dev/null"};
    command.insert(command.end(), further.begin(), further.end());
    process_ = session.start(command, "compositor");
    XClient client(session.environment().at("DISPLAY"));
    const bool answered =
        XClient::waitUntil([&] { return Compositor::runsOn(client) || !process_.isRunning(); },
                           Deadline::usual(), {process_.descriptor()});
    if (!answered || !process_.isRunning()) {
        throw DesktopError("the compositor did not start:\n" + session.output("compositor"));
    }
}

bool Compositor::runsOn(XClient& client) {
    const XReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        client.connection(),
        xcb_get_selection_owner(client.connection(), client.atom("_NET_WM_CM_S0")), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

void Compositor::stop() { process_.stop(); }

void Compositor::crash() {
    process_.signal(SIGKILL);
    process_.stop();
}

}  // namespace lumatile::desktop
