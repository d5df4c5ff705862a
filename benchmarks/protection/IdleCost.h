#pragma once

#include <cstdint>
#include <vector>

namespace lumatile::benchmark {

/// What the program costs while nobody does anything: protection on with the recommended settings,
/// a few windows of other programs on a private desktop.
struct IdleCost {
    bool composited = false;  ///< Whether overlays darken the screens; else the gamma ramps do.
    double seconds = 0;
    double wakeUpsPerSecond = 0;
    double processorShare = 0;  ///< Of one core, 1 for all of it.
    std::uint64_t residentKiB = 0;
    std::uint64_t proportionalKiB = 0;

    /// A desktop with a compositor and one without, at the same time.
    /// @param seconds how long to look at them; on the real clock
    /// @throws DesktopError when a program does not run through it
    static std::vector<IdleCost> measure(int seconds);
};

}  // namespace lumatile::benchmark
