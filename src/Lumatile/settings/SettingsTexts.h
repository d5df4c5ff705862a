#pragma once

#include <string>
#include <string_view>

/// Every text of the settings window and of the About panel.
namespace lumatile::SettingsTexts {

inline constexpr std::string_view windowTitle = "Lumatile Settings";
inline constexpr std::string_view sidebar = "Sections";
inline constexpr std::string_view setAside = "Set Aside and Start Anew";

// General.
inline constexpr std::string_view launchAtLogin = "Launch at login";
inline constexpr std::string_view dragToSnap = "Snap by dragging windows to screen edges";
inline constexpr std::string_view automaticUpdates = "Check for updates automatically";
inline constexpr std::string_view checkForUpdates = "Check for Updates…";
inline constexpr std::string_view thisSession = "In This Session";
inline constexpr std::string_view windowTiling = "macOS Window Tiling";
inline constexpr std::string_view sync = "Sync";
inline constexpr std::string_view shareThrough = "Share settings through a folder";
inline constexpr std::string_view shareNot = "None";
inline constexpr std::string_view chooseFolder = "Choose a Folder…";
inline constexpr std::string_view chooseFolderTitle = "Folder for Shared Settings";
inline constexpr std::string_view replaceShared = "Replace with This Computer’s Settings";
inline constexpr std::string_view runCommand = "Run a Command";
inline constexpr std::string_view quit = "Quit Lumatile";

// Snap areas.
inline constexpr std::string_view builtIn = "Built-in";
inline constexpr std::string_view yourAreas = "Your Areas";
inline constexpr std::string_view portraitSuffix = " (Portrait)";
inline constexpr std::string_view portrait = "Portrait";
inline constexpr std::string_view portraitShown = "Portrait, shown";
inline constexpr std::string_view portraitHidden = "Portrait, hidden";
inline constexpr std::string_view newArea = "New snap area";
inline constexpr std::string_view deleteThisArea = "Delete snap area";
inline constexpr std::string_view noAreas = "Click + to draw your own area.";
inline constexpr std::string_view selectAnArea = "Select a snap area";
inline constexpr std::string_view name = "Name";
inline constexpr std::string_view namePlaceholder = "Area name";
inline constexpr std::string_view shortcut = "Shortcut";
inline constexpr std::string_view recordShortcut = "Record Shortcut";
inline constexpr std::string_view shortcutOn = "Shortcut is on";
inline constexpr std::string_view removeShortcut = "Remove Shortcut";
inline constexpr std::string_view bareKey = "Add Ctrl, Alt, Shift or Super to the key";
inline constexpr std::string_view unusableKey = "This key cannot be used in a shortcut";
inline constexpr std::string_view refusedHere = "Another program on this desktop has this shortcut";
inline constexpr std::string_view dragForBuiltIn =
    "Drag across the grid to choose where this snaps.";
inline constexpr std::string_view dragForCustom =
    "Drag across the grid to draw this area. Keyboard and menu only.";
inline constexpr std::string_view arrowKeys =
    "The arrow keys move the area, with Shift they resize it.";
inline constexpr std::string_view restoreDefaultArea = "Restore Default Area";
inline constexpr std::string_view deleteArea = "Delete Area";

/// @param holder the command that has the shortcut, as the list names it
inline std::string alreadyUsedBy(std::string_view holder) {
    return "Already used by " + std::string(holder);
}

/// @param holder who has the shortcut, as the desktop calls it; empty: not known
inline std::string refusedBy(std::string_view holder) {
    return holder.empty() ? std::string(refusedHere)
                          : "This shortcut belongs to “" + std::string(holder) + "”";
}

/// @param twin the area for the other screen orientation, as the list names it
inline std::string sharedWith(std::string_view twin) { return "Shared with " + std::string(twin); }

/// @param count at least 1
inline std::string refusedShortcuts(std::size_t count) {
    return count == 1
               ? "1 shortcut belongs to another program on this desktop."
               : std::to_string(count) + " shortcuts belong to other programs on this desktop.";
}

// The shortcut recorder.
inline constexpr std::string_view typeAShortcut = "Type a shortcut…";
inline constexpr std::string_view clickToRecord = "Click to record";

// OLED protection.
inline constexpr std::string_view windowOrbit = "Window Orbit";
inline constexpr std::string_view driftWindows = "Drift windows";
inline constexpr std::string_view distance = "Distance";
inline constexpr std::string_view moveEvery = "Move every";
inline constexpr std::string_view waitForPause = "Wait until I pause typing or scrolling";
inline constexpr std::string_view orbitNote =
    "At each interval, every window steps 1 px around a small square, never straying more than the "
    "distance above from where it was placed. With the pause option on, the step waits until "
    "you've stopped typing or moving the mouse for a moment. Move or resize a window, by hand or "
    "with macOS's tiling, and it drifts around its new spot.";
inline constexpr std::string_view edgeJitter = "Edge Jitter";
inline constexpr std::string_view varyEdges = "Vary where window edges sit";
inline constexpr std::string_view range = "Range";
inline constexpr std::string_view jitterNote =
    "Applies to every window. Edges along the screen border stay put; only inner edges shift. "
    "Changes once an hour, at the next window step.";
inline constexpr std::string_view idleDimming = "Idle Dimming";
inline constexpr std::string_view dimWhenIdle = "Dim the screen when idle";
inline constexpr std::string_view after = "After";
inline constexpr std::string_view strength = "Strength";
inline constexpr std::string_view dimNote = "Any keyboard or mouse input clears the dimming.";
inline constexpr std::string_view statusNote =
    "The top of the menu-bar menu shows each effect working: when windows last moved, this hour's "
    "edge shift, and the dimming setting.";
inline constexpr std::string_view restoreRecommended = "Restore Recommended Settings";

inline std::string pixels(int count) { return std::to_string(count) + " px"; }
inline std::string minutes(int count) { return std::to_string(count) + " min"; }
inline std::string percent(int count) { return std::to_string(count) + "%"; }

// About.
inline constexpr std::string_view programName = "Lumatile";
inline constexpr std::string_view description =
    "Snaps windows into place and keeps OLED screens from burning in.";
inline constexpr std::string_view licences = "Licences";
inline std::string version(std::string_view number) { return "Version " + std::string(number); }
inline constexpr std::string_view aboutTitle = "About Lumatile";
inline constexpr std::string_view close = "Close";

}  // namespace lumatile::SettingsTexts
