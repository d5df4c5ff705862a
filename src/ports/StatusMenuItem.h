#pragma once

#include <string>
#include <variant>
#include <vector>

#include "menu_model/MenuEntry.h"
#include "ports/ClosureMenuItem.h"
#include "ports/StatusText.h"

namespace lumatile {

/// A line that tells something and cannot be chosen.
struct StatusLine {
    std::string title;
    StatusText attributedTitle;  ///< The same line as it is to look; plain where that cannot be.

    bool operator==(const StatusLine&) const = default;
};

/// One item of the status menu, as data.
using StatusMenuItem = std::variant<StatusLine, ClosureMenuItem, MenuHeader, MenuSeparator>;

/// Top to bottom.
using StatusMenu = std::vector<StatusMenuItem>;

}  // namespace lumatile
