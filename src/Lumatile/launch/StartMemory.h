#pragma once

#include <memory>

#include "ports/RunLoop.h"

namespace lumatile {

/// The memory that only the start needs.
class StartMemory {
public:
    /// Gives it back once the start is over. For years to come most of the code that it has run is
    /// not run again.
    void releaseSoon(RunLoop& runLoop);

private:
    std::unique_ptr<RunLoopTimer> startHasSettled_;
};

}  // namespace lumatile
