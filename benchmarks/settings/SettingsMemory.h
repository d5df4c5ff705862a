#pragma once

#include <cstdint>

namespace lumatile::benchmark {

/// What the settings window costs in memory, proportional (shared pages divided among those who
/// share them), KiB.
struct SettingsMemory {
    std::uint64_t neverOpened = 0;
    std::uint64_t open = 0;
    std::uint64_t closed = 0;       ///< After the first opening.
    std::uint64_t closedTwice = 0;  ///< After the second.
    int times = 0;                  ///< How often it has been open at the end.
    std::uint64_t closedOften = 0;  ///< After the last.
    std::uint64_t bare = 0;         ///< A program of the same toolkit with nothing but an item.

    static SettingsMemory measure(int times);
};

}  // namespace lumatile::benchmark
