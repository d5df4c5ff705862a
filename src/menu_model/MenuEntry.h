#pragma once

#include <string>
#include <variant>

#include "commands/SnapCommand.h"
#include "menu_model/ActionID.h"

namespace lumatile {

/// The title of a section.
struct MenuHeader {
    std::string title;

    bool operator==(const MenuHeader&) const = default;
};

/// A line between two sections.
struct MenuSeparator {
    bool operator==(const MenuSeparator&) const = default;
};

/// One entry of the status menu below its status lines: an item that runs a command, the title of a
/// section, one of the fixed actions, or a separator.
using MenuEntry = std::variant<SnapCommand, MenuHeader, ActionID, MenuSeparator>;

}  // namespace lumatile
