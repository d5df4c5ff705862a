#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Lumatile/ApplicationConductor.h"
#include "oled_protection/Offset.h"
#include "platform/simulated/SimulatedClock.h"
#include "platform/simulated/SimulatedConflictPrompt.h"
#include "platform/simulated/SimulatedDesktopTiling.h"
#include "platform/simulated/SimulatedDimOverlays.h"
#include "platform/simulated/SimulatedHotKeys.h"
#include "platform/simulated/SimulatedInput.h"
#include "platform/simulated/SimulatedLog.h"
#include "platform/simulated/SimulatedOnboarding.h"
#include "platform/simulated/SimulatedPreferences.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedScreens.h"
#include "platform/simulated/SimulatedSettings.h"
#include "platform/simulated/SimulatedSharedFolder.h"
#include "platform/simulated/SimulatedStatusItem.h"
#include "platform/x11/X11AccessibilityPlatform.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Monitors.h"
#include "platform/x11/X11MouseEventSource.h"
#include "platform/x11/X11ScreenList.h"
#include "platform/x11/X11WindowMirror.h"
#include "platform/x11/X11Workspace.h"
#include "ports/Platform.h"
#include "tests/desktop/support/OtherProgramsWorkspace.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::desktop {

/// The application on a real server with a real window manager and real windows, but with a clock,
/// hands and settings of the test's own: hours of steps take as long as the windows need to move.
class ShiftingDesktop {
public:
    /// A step every five seconds, round a ring of radius 2, and nothing else.
    static constexpr std::string_view shiftOnly =
        R"({"orbitStepInterval":5,"orbitWaitForPause":false,)"
        R"("jitterEnabled":false,"idleDimEnabled":false})";

    /// Edge jitter of up to 6 pixels at the same pace, and nothing else.
    static constexpr std::string_view jitterOnly =
        R"({"orbitEnabled":false,"orbitStepInterval":5,"orbitWaitForPause":false,)"
        R"("jitterTolerance":6,"idleDimEnabled":false})";

    /// Both.
    static constexpr std::string_view shiftAndJitter =
        R"({"orbitStepInterval":5,"orbitWaitForPause":false,)"
        R"("jitterTolerance":6,"idleDimEnabled":false})";

    static constexpr double interval = 5;

    /// Seconds that a window is waited for: what becomes of a step is to be the same on a busy
    /// machine, where window managers may overrun what a user is made to wait.
    static constexpr double patient = 4;

    /// The ring from the point on that is taken first: clockwise from beside its top-left corner.
    static constexpr std::array<Offset, 16> ring{{{-1, -2},
                                                  {0, -2},
                                                  {1, -2},
                                                  {2, -2},
                                                  {2, -1},
                                                  {2, 0},
                                                  {2, 1},
                                                  {2, 2},
                                                  {1, 2},
                                                  {0, 2},
                                                  {-1, 2},
                                                  {-2, 2},
                                                  {-2, 1},
                                                  {-2, 0},
                                                  {-2, -1},
                                                  {-2, -2}}};

    explicit ShiftingDesktop(WindowManager::Kind windowManager,
                             std::string_view oledSettings = shiftOnly,
                             WindowManager::Options options = {}, double longestTimeout = patient);
    ShiftingDesktop(const ShiftingDesktop&) = delete;
    ShiftingDesktop& operator=(const ShiftingDesktop&) = delete;
    ~ShiftingDesktop() = default;

    TestDesktop& desktop() { return desktop_; }
    DesktopObserver& observer() { return desktop_.observer(); }
    ApplicationConductor& conductor() { return *conductor_; }
    X11Connection& connection() { return *connection_; }
    SimulatedInput& input() { return input_; }
    SimulatedClock& clock() { return clock_; }

    /// A window of this process, active and placed; it counts as another program's.
    std::unique_ptr<TestWindow> open(const PixelRect& frame,
                                     TestWindow::Kind kind = TestWindow::Kind::decorated);

    /// Returns when the window manager has dealt with everything so far, also with what it puts off
    /// until it is idle, such as raising a window that it has just activated.
    void settle();

    /// Lets virtual time pass; the steps that fall due are taken.
    void advance(double seconds) { runLoop_.advance(seconds); }

    /// Lets `count` intervals pass, which is as many steps.
    void step(int count = 1) { advance(interval * count); }

    /// The outer frame at this moment, as another client of the server sees it.
    PixelRect frame(xcb_window_t window);

    /// Runs a built-in command on the active window.
    void run(std::string_view nameKey);

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
    SimulatedClock clock_;
    SimulatedRunLoop runLoop_;
    SimulatedLog log_;
    SimulatedPreferences preferences_;
    SimulatedSharedFolder sharedFolder_;
    SimulatedHotKeys hotKeys_;
    SimulatedInput input_;
    SimulatedStatusItem statusItem_{runLoop_};
    SimulatedSettings settings_;
    SimulatedOnboarding onboarding_;
    SimulatedConflictPrompt conflictPrompt_;
    SimulatedDesktopTiling tiling_;
    SimulatedScreens noScreens_;
    SimulatedDimOverlays dimOverlays_;
    X11MouseEventSource mouseTaps_;
    std::shared_ptr<ApplicationConductor> conductor_;
};

/// `frame` moved by an offset of the ring.
PixelRect shifted(const PixelRect& frame, const Offset& offset);

}  // namespace lumatile::desktop
