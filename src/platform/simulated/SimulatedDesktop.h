#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/simulated/SimulatedAccessibility.h"
#include "platform/simulated/SimulatedClock.h"
#include "platform/simulated/SimulatedConflictPrompt.h"
#include "platform/simulated/SimulatedDesktopTiling.h"
#include "platform/simulated/SimulatedDimOverlays.h"
#include "platform/simulated/SimulatedHighlight.h"
#include "platform/simulated/SimulatedHotKeys.h"
#include "platform/simulated/SimulatedInput.h"
#include "platform/simulated/SimulatedKeyCodes.h"
#include "platform/simulated/SimulatedLog.h"
#include "platform/simulated/SimulatedMouse.h"
#include "platform/simulated/SimulatedOnboarding.h"
#include "platform/simulated/SimulatedPreferences.h"
#include "platform/simulated/SimulatedPrograms.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedScreens.h"
#include "platform/simulated/SimulatedSettings.h"
#include "platform/simulated/SimulatedSharedFolder.h"
#include "platform/simulated/SimulatedSharedStore.h"
#include "platform/simulated/SimulatedStatusItem.h"
#include "platform/simulated/SimulatedTraffic.h"
#include "platform/simulated/SimulatedWindowManager.h"
#include "platform/simulated/SimulatedWorkspace.h"
#include "ports/Platform.h"

namespace lumatile {

/// A whole desktop in memory, with virtual time: the application runs on it as on a real one, and a
/// test does what a user does and sees what a user sees. Deterministic. Coordinates are those of
/// the accessibility space, except where a screen is placed in the arrangement.
class SimulatedDesktop {
public:
    SimulatedDesktop();
    SimulatedDesktop(const SimulatedDesktop&) = delete;
    SimulatedDesktop& operator=(const SimulatedDesktop&) = delete;
    ~SimulatedDesktop() = default;

    /// The ports, for the application to run on; the desktop outlives it.
    Platform platform();

    /// Lets time pass and the program's run loop run.
    void advance(double seconds) { runLoop.advance(seconds); }

    // What the user does.

    ApplicationID launch(SimulatedApplicationTraits traits) {
        return programs.launch(std::move(traits));
    }
    void quit(ApplicationID id) { programs.quit(id); }
    WindowID open(ApplicationID application, SimulatedWindowTraits traits);

    /// Opens an ordinary window without decorations.
    WindowID open(ApplicationID application, const Rect& frame);

    /// Moves or resizes a window with the pointer; to whole pixels.
    void dragTo(WindowID id, const Rect& frame);

    /// Raises and focuses the window under the pointer; on the empty desktop nothing has the focus.
    void click(const Point& point);

    KeyReceiver press(const KeyCombination& combination) {
        input.touch();
        return hotKeys.press(combination);
    }

    /// Plugs a screen in or gives it another frame, in the arrangement's space. What comes to lie
    /// on no screen is the window manager's business.
    void plug(std::string_view name, const Rect& arranged);
    void unplug(std::string_view name);

    // What the user sees; absent or false when there is no such window.

    /// The frame on the screen, whole pixels.
    std::optional<Rect> seen(WindowID id) const;

    /// The frame as a read of it answers, unrounded.
    std::optional<Rect> frame(WindowID id) const;

    bool isOpen(WindowID id) const { return programs.find(id) != nullptr; }

    // The desktop's things. Each depends only on those above it.

    SimulatedClock clock;
    SimulatedRunLoop runLoop;
    SimulatedInput input;
    SimulatedLog log;
    SimulatedPreferences preferences;
    SimulatedSharedFolder sharedFolder;
    SimulatedSharedStore& sharedStore;  ///< This computer's, without a location at first.
    SimulatedHotKeys hotKeys;
    SimulatedKeyCodes keyCodes;
    SimulatedStatusItem statusItem;
    SimulatedSettings settingsWindow;
    SimulatedOnboarding onboarding;
    SimulatedConflictPrompt conflictPrompt;
    SimulatedDesktopTiling tiling;
    SimulatedScreens screens;
    SimulatedDimOverlays dimOverlays;
    SimulatedPrograms programs;
    SimulatedWindowManager windowManager;
    SimulatedMouse mouse;
    std::shared_ptr<SimulatedHighlight> highlight = std::make_shared<SimulatedHighlight>();
    SimulatedTraffic traffic;
    SimulatedAccessibility accessibility;
    SimulatedWorkspace workspace;
};

}  // namespace lumatile
