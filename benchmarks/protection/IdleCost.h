#pragma once

#include <cstdint>

namespace lumatile::benchmark {

/// What the program costs while nobody does anything: protection on with the recommended settings,
/// a few windows of other programs on a private desktop.
struct IdleCost {
    double seconds = 0;
    double wakeUpsPerSecond = 0;
    double processorShare = 0;  ///< Of one core, 1 for all of it.
    std::uint64_t residentKiB = 0;
    std::uint64_t proportionalKiB = 0;

    /// @param seconds how long to look at it; on the real clock
    /// @throws DesktopError when the program does not run through it
    static IdleCost measure(int seconds);
};

}  // namespace lumatile::benchmark
