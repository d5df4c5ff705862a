#pragma once

#include <string_view>

/// What the tips of the settings window hold, in the words of the reference: `Vocabulary::apply`
/// makes them true on the host.
namespace lumatile::TipTexts {

/// A tip. What it lacks is empty.
struct Tip {
    std::string_view symbol;
    std::string_view title;
    std::string_view text;
    std::string_view button;

    bool operator==(const Tip&) const = default;
};

/// The tip about the system's own tiling while that is on; the button opens its settings.
inline constexpr Tip tilingIsOn{
    "exclamationmark.triangle.fill",
    "macOS's own window tiling is on",
    "It also snaps windows you drag to the edge of the screen, so it and Lumatile will fight over "
    "them. In System Settings ▸ Desktop & Dock ▸ Windows, turn off the two “Drag windows to…” "
    "options.",
    "Open Desktop & Dock Settings…",
};

/// The same tip while it is off.
inline constexpr Tip tilingIsOff{
    "checkmark.circle.fill",
    "",
    "macOS's own edge tiling is off, so it won't compete with drag-to-snap.",
    "",
};

constexpr const Tip& systemTiling(bool conflictsWithDragToSnap) {
    return conflictsWithDragToSnap ? tilingIsOn : tilingIsOff;
}

inline constexpr Tip protection{
    "sparkles.rectangle.stack",
    "",
    "OLED protection covers every window, however you placed it: with Lumatile, by hand, or with "
    "macOS's own green-button menu.",
    "",
};

/// The second button of the tip, where the system lets a program change the setting; it asks first.
inline constexpr std::string_view switchOffButton = "Turn It Off…";
inline constexpr std::string_view switchOffQuestion = "Turn off macOS's own window tiling?";
inline constexpr std::string_view switchOffDetails =
    "Lumatile changes that setting for you. To have the tiling back, turn on "
    "the two “Drag windows to…” options again in System Settings ▸ Desktop & Dock ▸ Windows.";
inline constexpr std::string_view switchOffConfirm = "Turn Off";
inline constexpr std::string_view switchOffCancel = "Cancel";

/// What the tip adds when one of its buttons could not do what it says.
inline constexpr std::string_view openingFailed = "System Settings could not be opened.";
inline constexpr std::string_view switchOffFailed =
    "Lumatile could not change that setting. Turn it off in System Settings ▸ Desktop & Dock ▸ "
    "Windows.";

}  // namespace lumatile::TipTexts
