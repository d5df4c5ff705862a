#pragma once

#include <cstddef>

#include "benchmarks/support/Statistics.h"

namespace lumatile::benchmark {

/// One step of the orbit as the program takes it, candidates gathered and windows moved, on a
/// private desktop.
struct StepCost {
    std::size_t windows = 0;
    std::size_t roundTrips = 0;   ///< Most of any step, of all windows together.
    double writes = 0;            ///< Messages to the window manager, of a window and a step.
    Statistics microseconds;      ///< Of a whole step, until the window manager has moved them all.
    Statistics bareMicroseconds;  ///< Of the same moves, each asked for and awaited, no more.
    Statistics ownMicroseconds;   ///< Of the program's own processor time in it.

    /// Microseconds of our own processor time.
    double ownPerWindow() const { return ownMicroseconds.median / static_cast<double>(windows); }
    /// Ratio of medians.
    double toBareMoves() const { return microseconds.median / bareMicroseconds.median; }
    /// Microseconds.
    double perWindow() const { return microseconds.median / static_cast<double>(windows); }

    /// @param windows of as many clients of the server
    /// @param steps to be measured
    /// @throws DesktopError when a window does not move in every step
    static StepCost measure(std::size_t windows, int steps);
};

}  // namespace lumatile::benchmark
