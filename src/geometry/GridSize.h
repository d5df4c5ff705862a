#pragma once

#include <cstdint>

#include "geometry/Orientation.h"

namespace lumatile {

/// The number of grid columns and rows on a screen.
struct GridSize {
    std::int64_t cols = 0;
    std::int64_t rows = 0;

    bool operator==(const GridSize&) const = default;

    /// 24 × 12 on landscape and its transpose 12 × 24 on portrait screens, so that a cell has about
    /// the same shape either way.
    static GridSize of(Orientation orientation);
};

}  // namespace lumatile
