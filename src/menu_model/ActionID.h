#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace lumatile {

/// What the status menu offers apart from the commands. Hashed by its number, as every enumeration.
enum class ActionID : std::uint8_t { settings, checkForUpdates, about, quit };

/// The stable texts, in the order of the cases.
inline constexpr std::array<std::string_view, 4> actionRawValues{"settings", "checkForUpdates",
                                                                 "about", "quit"};

constexpr std::string_view rawValue(ActionID action) {
    return actionRawValues.at(static_cast<std::size_t>(action));
}

/// The action of a raw value; absent for any other text.
constexpr std::optional<ActionID> actionFromRawValue(std::string_view text) {
    for (std::size_t i = 0; i < actionRawValues.size(); ++i) {
        if (actionRawValues.at(i) == text) {
            return static_cast<ActionID>(i);
        }
    }
    return std::nullopt;
}

}  // namespace lumatile
