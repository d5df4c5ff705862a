#pragma once

#include <optional>

#include "commands/SnapCommand.h"
#include "geometry/CellRect.h"
#include "geometry/Orientation.h"
#include "geometry/Rect.h"
#include "settings_core/GridCell.h"

namespace lumatile {

/// What drawing an area on the grid comes to.
struct GridEditing {
    GridEditing() = delete;

    /// The nearest cell inside the grid.
    static GridCell clamp(const GridCell& cell, Orientation orientation);

    /// The block that two cells span, whichever comes first; both are in it.
    static CellRect rect(const GridCell& from, const GridCell& to);

    /// Where a block lies in a drawing area; in that area's space, unrounded.
    static Rect rect(const CellRect& cells, const Rect& area, Orientation orientation);

    /// Makes the block the whole target of `command`.
    static void setTarget(SnapCommand& command, const CellRect& rect);

    /// Makes the block the whole activation area of `command`.
    static void setActivation(SnapCommand& command, const CellRect& rect);

    /// The built-in command that `command` began as; absent for an area that the user drew.
    static std::optional<SnapCommand> defaultOf(const SnapCommand& command);
};

}  // namespace lumatile
