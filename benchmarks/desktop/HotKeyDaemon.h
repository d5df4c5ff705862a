#pragma once

#include <string>
#include <vector>

#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::benchmark {

/// sxhkd with some shortcuts, each of which starts a command.
class HotKeyDaemon {
public:
    struct Shortcut {
        std::string keys;  ///< In the daemon's notation: "ctrl + alt + x"
        std::string command;
    };

    /// Started; it takes its keys a moment later.
    HotKeyDaemon(desktop::PrivateSession& session, const std::vector<Shortcut>& shortcuts);

private:
    TemporaryFolder folder_;
    desktop::ChildProcess process_;
};

}  // namespace lumatile::benchmark
