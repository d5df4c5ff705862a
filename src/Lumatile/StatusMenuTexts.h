#pragma once

/// What the status menu and its icon say beside the names of commands.
namespace lumatile::StatusMenuTexts {

inline constexpr const char* settings = "Settings…";
inline constexpr const char* checkForUpdates = "Check for Updates…";
inline constexpr const char* about = "About Lumatile";
inline constexpr const char* quit = "Quit Lumatile";

inline constexpr const char* descriptionActive = "Lumatile";
inline constexpr const char* descriptionPaused = "Lumatile, protection off";

}  // namespace lumatile::StatusMenuTexts
