#include "settings_core/ShortcutValidator.h"

#include <algorithm>

namespace lumatile {

namespace {

constexpr std::uint32_t anyModifier = ClassicModifier::command | ClassicModifier::shift |
                                      ClassicModifier::option | ClassicModifier::control;

}  // namespace

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
    return (shortcut.carbonModifiers & anyModifier) != 0;
}

bool ShortcutValidator::isAbandoning(const Shortcut& shortcut) {
    constexpr std::uint32_t escape = 53;
    return shortcut.carbonKeyCode == escape && !isAcceptable(shortcut);
}

}  // namespace lumatile
