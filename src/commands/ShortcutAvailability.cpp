#include "commands/ShortcutAvailability.h"

#include <algorithm>

#include "commands/CommandStore.h"

namespace lumatile {

namespace {

bool contains(const std::vector<UUID>& ids, const UUID& id) {
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

}  // namespace

bool ShortcutAvailability::isRefused(const SnapCommand& command,
                                     const std::vector<SnapCommand>& commands,
                                     const std::vector<UUID>& refused) {
    return command.shortcut && command.shortcut->enabled &&
           std::any_of(commands.begin(), commands.end(), [&](const SnapCommand& each) {
               return each.shortcut == command.shortcut && contains(refused, each.id);
           });
}

std::optional<SnapCommand> ShortcutAvailability::firstWorking(
    const std::vector<SnapCommand>& commands, const std::vector<UUID>& refused) {
    const std::vector<SnapCommand> bindings = CommandStore(commands).hotkeyBindings();
    const auto found = std::find_if(bindings.begin(), bindings.end(), [&](const SnapCommand& each) {
        return !contains(refused, each.id);
    });
    return found != bindings.end() ? std::optional(*found) : std::nullopt;
}

}  // namespace lumatile
