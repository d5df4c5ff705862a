#include "preference_sync/ClockLead.h"

#include <algorithm>

namespace lumatile {

void ClockLead::note(double changeTime, double now) {
    const double lead = changeTime - now;
    if (lead > tolerated) {
        // A set may have lain there for a while, and so shows too little rather than too much.
        seconds_ = std::max(lead, seconds_.value_or(0));
    } else {
        seconds_.reset();
    }
}

}  // namespace lumatile
