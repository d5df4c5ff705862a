#pragma once

#include <functional>
#include <memory>

#include "platform/wayland/WaylandConnection.h"
#include "tests/desktop/support/Deadline.h"
#include "tests/desktop/support/kwin/KWinDesktop.h"

namespace lumatile::desktop {

/// A private desktop and the program's own connection to its compositor.
class WaylandDesk : public KWinDesktop {
public:
    WaylandDesk() : WaylandDesk(Options{}) {}
    explicit WaylandDesk(const Options& options);

    WaylandConnection& connection() { return *connection_; }

    /// Serves the connection, the bus and the tests' windows until `condition` holds.
    /// @return false when it does not hold in time
    bool waitUntil(const std::function<bool()>& condition, Deadline deadline = Deadline::usual());

    /// Returns when the compositor has carried out what was asked on the connection, and the
    /// listeners have had what it told.
    void settle();

private:
    std::unique_ptr<WaylandConnection> connection_;
};

}  // namespace lumatile::desktop
