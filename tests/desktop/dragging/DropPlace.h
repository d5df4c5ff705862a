#pragma once

#include <string_view>
#include <vector>

#include "tests/desktop/support/PixelRect.h"

namespace lumatile::desktop {

/// A place at an edge or a corner of a monitor, and what dropping a window there does, as a user
/// would read it in a manual.
struct DropPlace {
    std::string_view command;  ///< "left", "centerThird" …
    int x = 0;                 ///< Of the pointer, root coordinates.
    int y = 0;
};

/// One for each strip and corner of a monitor that has something to drop into.
/// @param visible the monitor less its panels
std::vector<DropPlace> dropPlaces(const PixelRect& visible);

}  // namespace lumatile::desktop
