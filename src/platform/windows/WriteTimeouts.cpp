#include "platform/windows/WriteTimeouts.h"

#include <algorithm>

namespace lumatile {

void WriteTimeouts::set(Pid application, double seconds) {
    if (seconds < longest) {
        applications_[application] = seconds;
    } else {
        applications_.erase(application);
    }
}

double WriteTimeouts::of(std::optional<double> window, std::optional<Pid> application,
                         double most) const {
    double timeout = most;
    if (window && *window < longest) {
        timeout = std::min(timeout, *window);
    }
    if (application) {
        const auto found = applications_.find(*application);
        if (found != applications_.end()) {
            timeout = std::min(timeout, found->second);
        }
    }
    return timeout;
}

}  // namespace lumatile
