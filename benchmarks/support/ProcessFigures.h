#pragma once

#include <sys/types.h>

#include <cstdint>
#include <map>
#include <string>

namespace lumatile::benchmark {

/// What the system tells of a process, over all its threads.
struct ProcessFigures {
    std::uint64_t wakeUps = 0;  ///< Voluntary context switches: each ends with a wake-up.
    std::map<std::string, std::uint64_t> wakeUpsOfThreads;  ///< The same by the thread's number.
    double processorSeconds = 0;                            ///< As the scheduler counts it.
    std::uint64_t residentKiB = 0;
    std::uint64_t proportionalKiB = 0;  ///< Shared pages divided among those who share them.

    /// @throws DesktopError when there is no such process
    static ProcessFigures of(pid_t process);

    /// Those of the threads that there are now; what threads did that have ended since is not
    /// known.
    std::uint64_t wakeUpsSince(const ProcessFigures& before) const;
};

}  // namespace lumatile::benchmark
