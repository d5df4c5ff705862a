#pragma once

#include <string>
#include <string_view>

/// What the KWin adapters write to the log, and the names under which Plasma shows this program.
namespace lumatile::KWinTexts {

inline constexpr std::string_view noSession =
    "this is no Plasma session under Wayland: there is no KWin on the message bus";
inline constexpr std::string_view lost =
    "the Wayland compositor has gone away; waiting for it to come back";

/// The toolkit's words when its own connection to the compositor breaks, as they begin.
inline constexpr std::string_view toolkitFarewell = "The Wayland connection";

inline constexpr std::string_view windowManager = "KWin";

/// In the list of programs on Plasma's page of shortcuts.
inline constexpr std::string_view friendlyName = "Lumatile";

/// A combination by its holder.
inline std::string holder(std::string_view title, std::string_view program) {
    return std::string(title) + " of " + std::string(program);
}

// What is less than under X11.
inline constexpr std::string_view buttonsUnknown =
    "A held mouse button is known here only while a window is moved or resized. While you hold one "
    "still for something else, windows may be shifted by a pixel.";

}  // namespace lumatile::KWinTexts
