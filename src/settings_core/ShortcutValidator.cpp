#include "settings_core/ShortcutValidator.h"

#include <algorithm>

namespace lumatile {

std::optional<SnapCommand> ShortcutValidator::conflict(const Shortcut& shortcut,
                                                       const std::vector<SnapCommand>& commands,
                                                       const std::optional<UUID>& excluding) {
    const auto found =
        std::find_if(commands.begin(), commands.end(), [&](const SnapCommand& command) {
            return command.id != excluding && command.shortcut && command.shortcut->enabled &&
                   command.shortcut->carbonKeyCode == shortcut.carbonKeyCode &&
                   command.shortcut->carbonModifiers == shortcut.carbonModifiers;
        });
    return found != commands.end() ? std::optional(*found) : std::nullopt;
}

bool ShortcutValidator::isAcceptable(const Shortcut& shortcut) {
    constexpr std::uint32_t anyOf = ClassicModifier::command | ClassicModifier::shift |
                                    ClassicModifier::option | ClassicModifier::control;
    return (shortcut.carbonModifiers & anyOf) != 0;
}

}  // namespace lumatile
