#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "platform/wayland/WaylandConnection.h"
#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/Deadline.h"
#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::desktop {

/// KWin as a Wayland compositor without any hardware, and the program's connection to it.
class WaylandDesk {
public:
    struct Outputs {
        int count = 2;  ///< Side by side, each of 1280 x 800 pixels.
        double scale = 1;
    };

    /// @param prepare what is to be done in the session before the compositor starts
    explicit WaylandDesk(const Outputs& outputs,
                         const std::function<void(PrivateSession&)>& prepare = {});

    const std::unique_ptr<WaylandConnection>& connection() const { return connection_; }
    PrivateSession& session() { return session_; }
    ChildProcess& compositor() { return compositor_; }

    /// The compositor's socket.
    std::string socket() const;

    /// Serves the connection until `condition` holds.
    /// @return false when it does not hold in time
    bool waitUntil(const std::function<bool()>& condition, Deadline deadline = Deadline::usual());

private:
    PrivateSession session_{""};
    ChildProcess compositor_;
    std::unique_ptr<WaylandConnection> connection_;
};

}  // namespace lumatile::desktop
