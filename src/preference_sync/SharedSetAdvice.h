#pragma once

#include <functional>

#include "preference_sync/SharedSet.h"

namespace lumatile {

/// What a store of shared sets does not know of them by itself.
struct SharedSetAdvice {
    /// Is shown each set that is found. One for which it answers false is not used: what was found
    /// before goes on counting. Absent: every set can be used.
    std::function<bool(const SharedSet&)> isUsable;
    /// The time of the shared set that this computer's own was made on, seconds since 1970-01-01
    /// 00:00 UTC: a set of another time was changed elsewhere meanwhile. Absent: none ever was.
    std::function<double()> madeOn;
};

}  // namespace lumatile
