#include "tests/desktop/support/WindowManager.h"

#include <signal.h>

#include "tests/desktop/support/Compositor.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/TestWindow.h"
#include "tests/desktop/support/WindowManagerAnswer.h"
#include "tests/desktop/support/WindowManagerSettings.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {
namespace {

// Follows the root's properties, which is where a window manager says that it is there.
class RootWatcher : public XClient {
public:
    explicit RootWatcher(const std::string& display) : XClient(display) {
        const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(connection(), root(), XCB_CW_EVENT_MASK, &mask);
    }

    bool isManaged() {
        const xcb_window_t check = cardinal(root(), "_NET_SUPPORTING_WM_CHECK");
        // A dead window manager leaves the root's property behind, but not the window.
        if (check == XCB_WINDOW_NONE || cardinal(check, "_NET_SUPPORTING_WM_CHECK") != check) {
            return false;
        }
        const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            connection(), xcb_get_window_attributes(connection(), root()), nullptr));
        return attributes &&
               (attributes->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT) != 0;
    }
};

}  // namespace

WindowManager::WindowManager(PrivateSession& session, Kind kind)
    : WindowManager(session, kind, Options{}) {}

WindowManager::WindowManager(PrivateSession& session, Kind kind, Options options)
    : session_(&session), kind_(kind) {
    const WindowManagerStart start = prepareWindowManager(session, kind, options);
    process_ = session.start(start.command, toString(kind), start.environment);
    waitUntilReady(session, options);
}

void WindowManager::waitUntilReady(PrivateSession& session, const Options& options) {
    RootWatcher watcher(session.environment().at("DISPLAY"));
    const bool answered =
        XClient::waitUntil([&] { return watcher.isManaged() || !process_.isRunning(); },
                           Deadline::usual(), {process_.descriptor()});
    if (!answered || !process_.isRunning()) {
        throw DesktopError(toString(kind_) + " did not start:\n" + session.output(toString(kind_)));
    }
    // Programs look once, when they open a window, whether it may cast a shadow.
    if (options.compositing && kind_ != Kind::openbox &&
        !XClient::waitUntil([&] { return Compositor::runsOn(watcher); })) {
        throw DesktopError(toString(kind_) + " does not composite:\n" +
                           session.output(toString(kind_)));
    }
    // Announced is not ready: keys are grabbed later, and a window that is mapped meanwhile may be
    // overlooked. Whoever manages a new window has finished starting.
    const Deadline deadline = Deadline::usual();
    for (bool managed = false; !managed;) {
        TestWindow::Options probe;
        // Metacity may end over a frame that goes while it is still being painted for the first
        // time, so this one has none.
        probe.kind = TestWindow::Kind::undecorated;
        probe.title = "probe";
        managed = TestWindow(session.environment().at("DISPLAY"), probe)
                      .tryMap(Deadline::in(std::chrono::milliseconds(300)));
        if (deadline.isOver()) {
            throw DesktopError(toString(kind_) + " manages no windows:\n" +
                               session.output(toString(kind_)));
        }
    }
    // It may still have to learn that windows which it overlooked are gone.
    waitForWindowManager(watcher);
}

void WindowManager::stop() {
    process_.stop();
    if (kind_ == Kind::kwin) {
        // Its service for shortcuts outlives it and would keep the keys.
        session_->endProgram("kglobalaccel5");
    }
}

void WindowManager::crash() {
    process_.signal(SIGKILL);
    process_.stop();
    if (kind_ == Kind::kwin) {
        session_->endProgram("kglobalaccel5");
    }
}

std::string toString(WindowManager::Kind kind) {
    switch (kind) {
        case WindowManager::Kind::openbox:
            return "openbox";
        case WindowManager::Kind::xfwm4:
            return "xfwm4";
        case WindowManager::Kind::kwin:
            return "kwin";
        case WindowManager::Kind::metacity:
            return "metacity";
    }
    return {};
}

}  // namespace lumatile::desktop
