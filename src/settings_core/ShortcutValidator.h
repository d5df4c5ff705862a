#pragma once

#include <optional>
#include <vector>

#include "base/UUID.h"
#include "commands/Shortcut.h"
#include "commands/SnapCommand.h"

namespace lumatile {

/// Whether a recorded shortcut can be used.
struct ShortcutValidator {
    ShortcutValidator() = delete;

    /// The first of `commands` that has an enabled shortcut of the same keys.
    /// @param excluding the id of a command that is passed over, as a rule the one that the
    ///        shortcut is for
    static std::optional<SnapCommand> conflict(const Shortcut& shortcut,
                                               const std::vector<SnapCommand>& commands,
                                               const std::optional<UUID>& excluding);

    /// A global shortcut needs Command, Shift, Option or Control; a bare key would be taken away
    /// from all programs.
    static bool isAcceptable(const Shortcut& shortcut);

    /// A bare Escape, by which the user says that nothing is to be recorded after all.
    static bool isAbandoning(const Shortcut& shortcut);
};

}  // namespace lumatile
