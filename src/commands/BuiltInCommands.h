#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "commands/SnapCommand.h"

namespace lumatile {

/// The commands that the program comes with, and their names.
struct BuiltInCommands {
    BuiltInCommands() = delete;

    /// A new list of the 34 commands: 19 for landscape screens, then 15 for portrait screens.
    static std::vector<SnapCommand> defaults();

    /// The name of a built-in key; absent for any other key.
    static std::optional<std::string_view> name(std::string_view nameKey);

    /// The name that a built-in key has on portrait screens, where it differs from `name`; absent
    /// where it does not.
    static std::optional<std::string_view> portraitName(std::string_view nameKey);
};

}  // namespace lumatile
