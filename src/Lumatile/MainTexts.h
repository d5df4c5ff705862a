#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What the program itself writes to the log.
namespace lumatile::MainTexts {

inline constexpr std::string_view program = "Lumatile";
inline constexpr std::string_view silentInstance =
    "another Lumatile runs on this desktop, but it does not answer";

inline constexpr std::string_view notBack = "it has not come back";

/// @param shortcuts the key combinations, as a reader would write them
inline std::string refusedShortcuts(const std::vector<std::string>& shortcuts) {
    std::string text = "shortcuts that belong to other programs here: ";
    for (std::size_t i = 0; i < shortcuts.size(); ++i) {
        text += (i == 0 ? "" : ", ") + shortcuts[i];
    }
    return text;
}

}  // namespace lumatile::MainTexts
