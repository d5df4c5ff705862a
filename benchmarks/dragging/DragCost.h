#pragma once

#include <string>
#include <vector>

#include "benchmarks/dragging/FastMouse.h"
#include "benchmarks/support/Statistics.h"

namespace lumatile::benchmark {

/// What the program costs, and how far it is behind, while a window is dragged with a mouse that
/// tells of a thousand movements a second. On a private desktop under openbox, with the program as
/// it is delivered.
struct DragCost {
    /// One way of dragging.
    struct Course {
        std::string name;
        FastMouse::Pace pace;
        double processorShare = 0;  ///< Of one core, 1 for all of it; as the scheduler counts it.
        double wakeUpsPerSecond = 0;
    };
    std::vector<Course> courses;

    /// Microseconds from the moment at which a movement is sent that leads to a new target until
    /// the server has the highlight's window there, seen from outside. Movements go on meanwhile,
    /// so everything that waits in the program's queue, the server's and the window manager's
    /// work, and the making of the window are in it.
    Statistics lateness;

    /// @param seconds of each course
    /// @throws DesktopError when the highlight is not where it has to be, or when the mouse did not
    /// keep its pace, so that something else than the program would have been measured
    static DragCost measure(int seconds);
};

}  // namespace lumatile::benchmark
