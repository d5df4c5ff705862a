#include "menu_model/MenuBuilder.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

namespace lumatile::MenuBuilder {

namespace {

constexpr std::string_view customGroup = "custom";

/// Where the menu shows a command that states no group.
std::string_view groupOf(const SnapCommand& command) {
    if (command.group) {
        return *command.group;
    }
    return command.kind == Kind::area ? "areas" : "movement";
}

/// What the menu lists, built-in commands first.
std::vector<SnapCommand> listed(const std::vector<SnapCommand>& commands, Axis axis) {
    std::vector<SnapCommand> kept;
    std::copy_if(
        commands.begin(), commands.end(), std::back_inserter(kept),
        [axis](const SnapCommand& each) { return each.visibleInMenuBar && each.axis == axis; });
    std::stable_partition(kept.begin(), kept.end(),
                          [](const SnapCommand& each) { return !each.isCustom(); });
    return kept;
}

}  // namespace

std::vector<MenuEntry> build(const std::vector<SnapCommand>& commands, Axis axis) {
    std::vector<MenuEntry> entries;
    std::optional<std::string> previousGroup;
    for (const SnapCommand& command : listed(commands, axis)) {
        if (command.isCustom() && previousGroup != customGroup) {
            if (!entries.empty()) {
                entries.emplace_back(MenuSeparator{});
            }
            entries.emplace_back(MenuHeader{"Your Areas"});
            previousGroup = customGroup;
        }
        const std::string_view group = groupOf(command);
        if (previousGroup && *previousGroup != group) {
            entries.emplace_back(MenuSeparator{});
        }
        entries.emplace_back(command);
        previousGroup = group;
    }
    if (!entries.empty()) {
        entries.emplace_back(MenuSeparator{});
    }
    entries.insert(entries.end(), {ActionID::settings, ActionID::checkForUpdates, ActionID::about,
                                   MenuSeparator{}, ActionID::quit});
    return entries;
}

}  // namespace lumatile::MenuBuilder
