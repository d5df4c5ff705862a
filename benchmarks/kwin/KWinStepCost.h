#pragma once

#include <cstddef>

#include "benchmarks/support/Statistics.h"

namespace lumatile::benchmark {

/// A step of the orbit in a KWin session, from the timer to the last window that has been read
/// back.
struct KWinStepCost {
    std::size_t windows = 0;
    Statistics step;  ///< Microseconds.
    Statistics bare;  ///< The same windows moved and read back one by one by a bare script.

    double toBareMoves() const { return step.median / bare.median; }

    /// @throws DesktopError when a window does not move
    static KWinStepCost measure(std::size_t windows, int steps);
};

}  // namespace lumatile::benchmark
