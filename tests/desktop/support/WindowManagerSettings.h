#pragma once

#include <string>
#include <vector>

#include "tests/desktop/support/PrivateSession.h"
#include "tests/desktop/support/WindowManager.h"

namespace lumatile::desktop {

/// How a window manager is started.
struct WindowManagerStart {
    std::vector<std::string> command;
    Environment environment;  ///< On top of the session's.
};

/// Writes the settings that `options` ask for into the session's home.
WindowManagerStart prepareWindowManager(const PrivateSession& session, WindowManager::Kind kind,
                                        WindowManager::Options options);

}  // namespace lumatile::desktop
