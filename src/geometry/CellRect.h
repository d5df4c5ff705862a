#pragma once

#include <cstdint>

namespace lumatile {

/// A block of grid cells. Nothing is clamped: a block that reaches past the grid yields a rectangle
/// that reaches past the frame.
struct CellRect {
    std::int64_t ox = 0;  ///< First column, counted from 0 at the frame's min x.
    std::int64_t oy = 0;  ///< First row, counted from 0 at the frame's min y.
    std::int64_t w = 0;   ///< Width in cells.
    std::int64_t h = 0;   ///< Height in cells.

    bool operator==(const CellRect&) const = default;
};

}  // namespace lumatile
