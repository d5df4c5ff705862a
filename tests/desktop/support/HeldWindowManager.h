#pragma once

#include <sys/types.h>

#include "tests/desktop/support/WindowManager.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// A window manager that is stopped, as one that hangs, until this is destroyed or let go. It is
/// never stopped while it holds the server, which would then answer nobody.
class HeldWindowManager {
public:
    /// @param client to ask the server with
    /// @throws DesktopError when it cannot be stopped at such a moment
    HeldWindowManager(const WindowManager& manager, XClient& client);
    HeldWindowManager(const HeldWindowManager&) = delete;
    HeldWindowManager& operator=(const HeldWindowManager&) = delete;
    ~HeldWindowManager() { letGo(); }

    /// It goes on.
    void letGo();

private:
    pid_t pid_;
};

}  // namespace lumatile::desktop
