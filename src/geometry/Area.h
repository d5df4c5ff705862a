#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "geometry/CellRect.h"

namespace lumatile {

/// A union of cell blocks. Equality and hash depend on the order of the blocks.
struct Area {
    std::vector<CellRect> segments;

    Area() = default;
    explicit Area(const CellRect& cell);
    explicit Area(std::vector<CellRect> cells);

    /// The first block, or the zero block when there is none.
    CellRect firstSegment() const;

    bool operator==(const Area&) const = default;
};

}  // namespace lumatile

template <>
struct std::hash<lumatile::Area> {
    std::size_t operator()(const lumatile::Area& area) const noexcept;
};
