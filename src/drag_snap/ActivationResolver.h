#pragma once

#include <optional>
#include <vector>

#include "commands/SnapCommand.h"
#include "geometry/Orientation.h"
#include "geometry/Point.h"
#include "geometry/Rect.h"

namespace lumatile {

/// Tells which command a drop at a place would select.
struct ActivationResolver {
    /// Of the areas for this orientation whose activation cells contain the point, the one with the
    /// fewest target cells, so that a corner wins over the edges that it belongs to; among equals
    /// the first in the list. Absent when there is none.
    /// @param point in the space of `screen`
    /// @param screen the visible frame, on which the cells are counted from its min edges
    std::optional<SnapCommand> resolve(const Point& point, const Rect& screen,
                                       Orientation orientation,
                                       const std::vector<SnapCommand>& commands) const;
};

}  // namespace lumatile
