#include "commands/ShortcutAvailability.h"

#include <algorithm>

namespace lumatile {

bool ShortcutAvailability::isRefused(const SnapCommand& command,
                                     const std::vector<SnapCommand>& commands,
                                     const std::vector<UUID>& refused) {
    return command.shortcut && command.shortcut->enabled &&
           std::any_of(commands.begin(), commands.end(), [&](const SnapCommand& each) {
               return each.shortcut == command.shortcut &&
                      std::find(refused.begin(), refused.end(), each.id) != refused.end();
           });
}

}  // namespace lumatile
