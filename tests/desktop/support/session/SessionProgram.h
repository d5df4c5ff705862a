#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/Environment.h"
#include "tests/desktop/support/session/SessionWindow.h"

namespace lumatile::desktop {

/// A real program whose window is snapped, as the table of a session has it.
struct SessionProgram {
    std::string name;  ///< For messages.
    std::vector<std::string> command;
    std::string windowClass;    ///< Of its window, WM_CLASS or what stands for it.
    Environment environment{};  ///< Beside the session's.
    int columnWidth = 1;        ///< The steps in which its size changes, pixels.
    int rowHeight = 1;
    /// Whether its window has a new size only once the program has drawn it, as all have that are
    /// shown by Wayland; elsewhere the desktop gives sizes by itself.
    bool drawsItsSize = false;
};

/// One that runs, its window shown and active.
struct RunningProgram {
    ChildProcess process;
    std::unique_ptr<SessionWindow> window;
};

}  // namespace lumatile::desktop
