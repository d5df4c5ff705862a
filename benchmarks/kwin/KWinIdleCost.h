#pragma once

#include <cstdint>

namespace lumatile::benchmark {

/// What the program costs on a private KWin while nobody does anything, with the recommended
/// settings and a few windows of other programs.
struct KWinIdleCost {
    double seconds = 0;
    double wakeUpsPerSecond = 0;      ///< Of the program.
    double kwinWakeUpsPerSecond = 0;  ///< Of KWin with the program's script in it.
    double bareWakeUpsPerSecond = 0;  ///< Of a KWin without, looked at for the same time.
    std::uint64_t residentKiB = 0;
    std::uint64_t proportionalKiB = 0;
    std::uint64_t x11ResidentKiB = 0;  ///< Of the program on an X server, the same settings.
    std::uint64_t x11ProportionalKiB = 0;

    /// What the program makes both processes wake up.
    double causedWakeUpsPerSecond() const {
        return wakeUpsPerSecond + kwinWakeUpsPerSecond - bareWakeUpsPerSecond;
    }

    /// @param seconds how long to look; on the real clock
    /// @throws DesktopError when a program does not run through it
    static KWinIdleCost measure(int seconds);
};

}  // namespace lumatile::benchmark
