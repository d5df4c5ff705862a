#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "platform/x11/X11AccessibilityPlatform.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Monitors.h"
#include "platform/x11/X11MouseEventSource.h"
#include "platform/x11/X11ScreenList.h"
#include "platform/x11/X11WindowMirror.h"
#include "platform/x11/X11Workspace.h"
#include "tests/desktop/support/OtherProgramsWorkspace.h"
#include "tests/desktop/support/ShiftingApplication.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::desktop {

/// The application on a real server with a real window manager and real windows, in virtual time.
class ShiftingDesktop : public ShiftingPace {
public:
    /// Seconds that a window is waited for: what becomes of a step is to be the same on a busy
    /// machine, where window managers may overrun what a user is made to wait.
    static constexpr double patient = 4;

    explicit ShiftingDesktop(WindowManager::Kind windowManager,
                             std::string_view oledSettings = shiftOnly,
                             WindowManager::Options options = {}, double longestTimeout = patient);
    ShiftingDesktop(const ShiftingDesktop&) = delete;
    ShiftingDesktop& operator=(const ShiftingDesktop&) = delete;
    ~ShiftingDesktop() = default;

    TestDesktop& desktop() { return desktop_; }
    DesktopObserver& observer() { return desktop_.observer(); }
    ApplicationConductor& conductor() { return application_->conductor(); }
    X11Connection& connection() { return *connection_; }
    SimulatedInput& input() { return application_->input(); }
    SimulatedClock& clock() { return time_.clock; }

    /// A window of this process, active and placed; it counts as another program's.
    std::unique_ptr<TestWindow> open(const PixelRect& frame,
                                     TestWindow::Kind kind = TestWindow::Kind::decorated);

    /// Returns when the window manager has dealt with everything so far, also with what it puts off
    /// until it is idle, such as raising a window that it has just activated.
    void settle();

    /// Lets virtual time pass; the steps that fall due are taken.
    void advance(double seconds) { time_.runLoop.advance(seconds); }

    /// Lets `count` intervals pass, which is as many steps.
    void step(int count = 1) { advance(interval * count); }

    /// The outer frame at this moment, as another client of the server sees it.
    PixelRect frame(xcb_window_t window);

    /// Runs a built-in command on the active window.
    void run(std::string_view nameKey) { application_->run(nameKey); }

    /// The messages about `window` since the observer's last `forget` that ask for anything else
    /// than a place of the same size.
    std::vector<RootMessage> otherThanMoves(xcb_window_t window);

private:
    TestDesktop desktop_;
    std::unique_ptr<X11Connection> connection_;
    X11Monitors monitors_;
    X11ScreenList screenList_;
    X11WindowMirror mirror_;
    X11AccessibilityPlatform accessibility_;
    X11Workspace x11Workspace_;
    OtherProgramsWorkspace workspace_;
    VirtualTime time_;
    X11MouseEventSource mouseTaps_;
    std::unique_ptr<ShiftingApplication> application_;
};

}  // namespace lumatile::desktop
