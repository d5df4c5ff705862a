#pragma once

#include "geometry/Area.h"
#include "geometry/CellRect.h"
#include "geometry/Orientation.h"
#include "geometry/Point.h"
#include "geometry/Rect.h"
#include "geometry/Size.h"

namespace lumatile {

/// The arithmetic from grid cells to screen rectangles. Pure; every rectangle is in the coordinate
/// space of `frame` and nothing is rounded. The order of operations is fixed (cell size, then times
/// the count, then plus the origin), so all users of a target agree on it bit for bit.
struct Grid {
    Grid() = delete;

    /// Width and height of one cell of `frame`.
    static Size cellSize(const Rect& frame, Orientation orientation);

    /// The rectangle of one block of cells.
    static Rect rect(const CellRect& cell, const Rect& frame, Orientation orientation);

    /// The smallest rectangle enclosing all blocks of `area`, gaps included; the zero rectangle for
    /// an area without blocks.
    static Rect rect(const Area& area, const Rect& frame, Orientation orientation);

    /// Whether `point` lies in one of the blocks (half-open). Gaps between blocks are outside.
    static bool contains(const Point& point, const Area& area, const Rect& frame,
                         Orientation orientation);

    /// A rectangle of `size`, never clamped, that has its centre where `frame` has its own.
    static Rect centered(const Size& size, const Rect& frame);

    /// `rect` with the place and size relative to `target` that it had relative to `source`.
    static Rect transferred(const Rect& rect, const Rect& source, const Rect& target);
};

}  // namespace lumatile
