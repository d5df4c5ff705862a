#pragma once

#include <cstddef>

#include "benchmarks/support/Statistics.h"

namespace lumatile::benchmark {

/// Finding the snappable windows of all applications with their frames, on a private desktop with
/// many windows of as many clients of the server.
struct WindowEnumeration {
    std::size_t windows = 0;
    std::size_t roundTrips = 0;      ///< Most of any enumeration by an adapter that is new.
    std::size_t roundTripsNext = 0;  ///< Most of any further one when nothing has changed.
    Statistics together;             ///< Microseconds of an enumeration by a new adapter.
    Statistics oneByOne;  ///< Microseconds of asking nine facts of each window, each waited for.

    /// @param rounds enumerations of either kind
    /// @throws DesktopError when the windows do not open or are not all found
    static WindowEnumeration measure(std::size_t windows, int rounds);
};

}  // namespace lumatile::benchmark
