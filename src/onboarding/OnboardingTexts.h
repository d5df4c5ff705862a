#pragma once

#include <array>
#include <string_view>

#include "windows/TrustObstacle.h"

/// Every text of the onboarding window, in the words of the reference: `Vocabulary::apply` makes
/// them true on the host.
namespace lumatile::OnboardingTexts {

inline constexpr std::string_view windowTitle = "Lumatile Setup";

// Until the permission is there.
inline constexpr std::string_view welcome = "Welcome to Lumatile";
inline constexpr std::string_view explanation =
    "Lumatile arranges your windows and gently shifts them to protect OLED displays from burn-in. "
    "It needs Accessibility access to move other apps' windows.";
inline constexpr std::string_view openSettings = "Open System Settings…";
inline constexpr std::string_view waiting = "Waiting for permission…";
inline constexpr std::string_view openSettingsAgain = "Open System Settings again";

// From then on.
inline constexpr std::string_view readySymbol = "checkmark.circle.fill";
inline constexpr std::string_view ready = "You're all set";
inline constexpr std::string_view done = "Done";

/// What the user can do now. Two asterisks stand before and behind what is shown in bold.
struct Hint {
    std::string_view symbol;
    std::string_view text;
};
inline constexpr std::array hints{
    Hint{"keyboard",
         "Press **⌃⌥ ← → ↑ ↓** to snap the front window to a half. Every shortcut is in the "
         "menu-bar menu."},
    Hint{"arrow.up.left.and.arrow.down.right",
         "Drag a window to a screen edge or corner and let go to snap it."},
};

/// Below the hints where another program has keys that they name: "%1" is a shortcut that works,
/// "%2" the name of its command.
inline constexpr std::string_view takenSymbol = "exclamationmark.triangle.fill";
inline constexpr std::string_view takenKeys =
    "Another program on this desktop has some of these keys. **%1** works: it snaps to “%2”.";

/// The same where none works.
inline constexpr std::string_view everythingTaken =
    "Other programs on this desktop have these keys. Choose others in Lumatile's settings.";

/// What is in the way, where no page of settings could be opened.
constexpr std::string_view missing(TrustObstacle obstacle) {
    switch (obstacle) {
        case TrustObstacle::noWindowManager:
            return "No window manager is running in this session. As soon as one is, Lumatile "
                   "continues by itself.";
        case TrustObstacle::windowManagerRefuses:
            return "The window manager of this session doesn't let programs move windows, so "
                   "Lumatile needs another one.";
        case TrustObstacle::otherDisplaySystem:
            return "This is a Wayland session, and its windows can't be reached. In an X11 session "
                   "Lumatile can move them.";
        case TrustObstacle::unknown:
            break;
    }
    return "This session doesn't let programs move windows.";
}

}  // namespace lumatile::OnboardingTexts
