#pragma once

#include <cstdint>

namespace lumatile::benchmark {

/// Memory of this process, in which the application takes steps, before and after many of them.
struct SteppingMemory {
    int steps = 0;
    std::uint64_t residentBefore = 0;  ///< KiB, as all of these.
    std::uint64_t residentAfter = 0;
    std::uint64_t proportionalBefore = 0;
    std::uint64_t proportionalAfter = 0;

    /// @param steps as many as fit into an hour at a step a second, for instance
    /// @throws DesktopError when the windows do not open or do not move
    static SteppingMemory measure(int steps);
};

}  // namespace lumatile::benchmark
