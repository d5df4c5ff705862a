#include "tests/desktop/support/VainWaits.h"

#include <dlfcn.h>
#include <poll.h>

#include <bit>

namespace lumatile::desktop {

namespace {

VainWaits* counting = nullptr;

constexpr double millisecondsPerSecond = 1000;

}  // namespace

VainWaits::VainWaits() { counting = this; }

VainWaits::~VainWaits() { counting = nullptr; }

double VainWaits::seconds() const {
    return static_cast<double>(milliseconds_) / millisecondsPerSecond;
}

void VainWaits::noteTimeout(int milliseconds) {
    if (counting != nullptr) {
        counting->milliseconds_ += milliseconds;
    }
}

}  // namespace lumatile::desktop

// A program that has a function of this name gets to see every wait of the libraries too.
extern "C" int poll(pollfd* fds, nfds_t nfds, int timeout) {
    using Poll = int (*)(pollfd*, nfds_t, int);
    static const Poll original = std::bit_cast<Poll>(dlsym(RTLD_NEXT, "poll"));
    const int ready = original(fds, nfds, timeout);
    if (ready == 0 && timeout > 0) {
        lumatile::desktop::VainWaits::noteTimeout(timeout);
    }
    return ready;
}
