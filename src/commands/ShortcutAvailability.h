#pragma once

#include <vector>

#include "base/UUID.h"
#include "commands/SnapCommand.h"

namespace lumatile {

/// Which shortcuts work on this desktop, from the commands whose keys another program has.
struct ShortcutAvailability {
    ShortcutAvailability() = delete;

    /// Whether `command` has a shortcut that is on and whose keys another program has. A portrait
    /// twin is reached through its landscape command, so what that is refused counts for both.
    /// @param refused the ids of the commands that could not be registered
    static bool isRefused(const SnapCommand& command, const std::vector<SnapCommand>& commands,
                          const std::vector<UUID>& refused);
};

}  // namespace lumatile
