#pragma once

#include "benchmarks/support/Statistics.h"

namespace lumatile::benchmark {

/// From letting go of a window at the left edge of the screen until it is the left half, on two
/// private desktops under metacity, in turn: the program's drop where the window manager's own
/// tiling is off, and the window manager's own tile where there is no program.
struct DropLatency {
    Statistics lumatile;  ///< Microseconds, from the release to the new geometry on the server.
    Statistics own;

    /// @param drops of each
    /// @throws DesktopError when a drop does not bring the window to its place
    static DropLatency measure(int drops);
};

}  // namespace lumatile::benchmark
