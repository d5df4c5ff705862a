#pragma once

#include "benchmarks/support/Statistics.h"

namespace lumatile::benchmark {

/// From a key press to the new geometry of a native window on a private KWin, as KWin tells it.
struct KWinSnapLatency {
    Statistics lumatile;   ///< Its shortcut for the left half. Microseconds.
    Statistics quickTile;  ///< KWin's own binding for the same place. Microseconds.

    /// @param rounds presses of each, taken in turns
    /// @throws DesktopError when one of them does not lead there
    static KWinSnapLatency measure(int rounds);
};

}  // namespace lumatile::benchmark
