#include "tests/desktop/wayland/WaylandDesk.h"

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/MainLoop.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

WaylandDesk::WaylandDesk(const Options& options)
    : KWinDesktop(options), connection_(WaylandConnection::open(server().socket())) {
    if (!connection_) {
        throw DesktopError("no connection to the compositor");
    }
    // A busy one answers later than is waited for.
    settle();
}

bool WaylandDesk::waitUntil(const std::function<bool()>& condition, Deadline deadline) {
    return XClient::waitUntil(
               [&] {
                   connection_->dispatch();
                   runReady();
                   return condition() || connection_->isLost();
               },
               deadline, {connection_->fileDescriptor()}) &&
           condition();
}

void WaylandDesk::settle() {
    const Deadline deadline = Deadline::usual();
    while (!connection_->synchronize()) {
        if (deadline.isOver() || connection_->isLost()) {
            throw DesktopError("the compositor does not answer");
        }
    }
}

}  // namespace lumatile::desktop
