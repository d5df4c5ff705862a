#pragma once

#include <string>
#include <vector>

#include "benchmarks/support/Statistics.h"

namespace lumatile::benchmark {

/// One way of moving a window to the left half of its monitor by a key.
struct SnapMethod {
    std::string name;
    Statistics microseconds;  ///< From the key press to the new geometry on the server.
};

/// Side by side on one private desktop under openbox, taking turns: Lumatile, openbox's own
/// binding, a bare program that sends openbox a message, which is the least that anybody beside the
/// window manager can do, and a hot-key daemon that starts programs to do it.
struct SnapLatency {
    SnapMethod lumatile;
    SnapMethod ownBinding;
    SnapMethod bareMessage;
    std::vector<SnapMethod> daemon;  ///< By what it starts.

    /// @param rounds key presses of each
    /// @throws DesktopError when one of them does not bring the window to its place
    static SnapLatency measure(int rounds);
};

}  // namespace lumatile::benchmark
