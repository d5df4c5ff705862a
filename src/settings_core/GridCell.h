#pragma once

#include <cstdint>

namespace lumatile {

/// A cell of the snap grid, counted from 0 at the top left; outside the grid where negative or past
/// its end.
struct GridCell {
    std::int64_t col = 0;
    std::int64_t row = 0;

    bool operator==(const GridCell&) const = default;
};

}  // namespace lumatile
