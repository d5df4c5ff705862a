#pragma once

#include <memory>
#include <string_view>

#include "Lumatile/ApplicationConductor.h"
#include "platform/simulated/SimulatedClock.h"
#include "platform/simulated/SimulatedConflictPrompt.h"
#include "platform/simulated/SimulatedDesktopTiling.h"
#include "platform/simulated/SimulatedDimOverlays.h"
#include "platform/simulated/SimulatedHotKeys.h"
#include "platform/simulated/SimulatedInput.h"
#include "platform/simulated/SimulatedKeyCodes.h"
#include "platform/simulated/SimulatedLog.h"
#include "platform/simulated/SimulatedOnboarding.h"
#include "platform/simulated/SimulatedPreferences.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedScreens.h"
#include "platform/simulated/SimulatedSettings.h"
#include "platform/simulated/SimulatedSharedFolder.h"
#include "platform/simulated/SimulatedStatusItem.h"
#include "ports/Platform.h"
#include "tests/desktop/support/ShiftingPace.h"

namespace lumatile::desktop {

/// Time as tests let it pass.
struct VirtualTime {
    SimulatedClock clock;
    SimulatedRunLoop runLoop{clock};
};

/// The application on the adapters of a real session, but with a clock, hands and settings of the
/// test's own: hours of steps take as long as the windows need to move.
class ShiftingApplication {
public:
    struct Adapters {
        AccessibilityPlatform& accessibility;
        ScreenList& screenList;
        Workspace& workspace;
        MouseEventSource& mouseTaps;
    };

    /// Starts its features. Time and adapters outlive it.
    ShiftingApplication(VirtualTime& time, const Adapters& adapters, std::string_view oledSettings);
    ShiftingApplication(const ShiftingApplication&) = delete;
    ShiftingApplication& operator=(const ShiftingApplication&) = delete;
    ~ShiftingApplication() = default;

    ApplicationConductor& conductor() { return *conductor_; }
    SimulatedInput& input() { return input_; }

    /// Runs a built-in command on the active window.
    void run(std::string_view nameKey);

private:
    SimulatedRunLoop& runLoop_;
    SimulatedLog log_;
    SimulatedPreferences preferences_;
    SimulatedSharedFolder sharedFolder_;
    SimulatedHotKeys hotKeys_;
    SimulatedKeyCodes keyCodes_;
    SimulatedInput input_;
    SimulatedStatusItem statusItem_;
    SimulatedSettings settings_;
    SimulatedOnboarding onboarding_;
    SimulatedConflictPrompt conflictPrompt_;
    SimulatedDesktopTiling tiling_;
    SimulatedScreens noScreens_;
    SimulatedDimOverlays dimOverlays_;
    std::shared_ptr<ApplicationConductor> conductor_;
};

}  // namespace lumatile::desktop
