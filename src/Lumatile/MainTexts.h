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

inline std::string list(std::string_view beginning, const std::vector<std::string>& parts) {
    std::string text(beginning);
    for (std::size_t i = 0; i < parts.size(); ++i) {
        text += (i == 0 ? "" : ", ") + parts[i];
    }
    return text;
}

/// @param keys the combination, as a reader would write it
/// @param holder who has it; empty: not known
inline std::string refusedShortcut(std::string_view keys, std::string_view holder) {
    return holder.empty() ? std::string(keys)
                          : std::string(keys) + " (" + std::string(holder) + ")";
}

/// @param shortcuts each as `refusedShortcut` writes it
inline std::string refusedShortcuts(const std::vector<std::string>& shortcuts) {
    return list("shortcuts that belong to other programs here: ", shortcuts);
}

inline std::string freedShortcuts(const std::vector<std::string>& shortcuts) {
    return list("shortcuts that other programs have let go and that work now: ", shortcuts);
}

}  // namespace lumatile::MainTexts
