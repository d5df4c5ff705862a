#include "commands/ShortcutAvailability.h"

#include <gtest/gtest.h>

#include "commands/BuiltInCommands.h"

namespace lumatile {
namespace {

TEST(ShortcutAvailability, aRefusedShortcutIsRefusedToItsTwinAsWell) {
    std::vector<SnapCommand> commands = BuiltInCommands::defaults();
    const std::vector<UUID> refused{commands[0].id};
    const auto twin = commands[0].counterpart(commands, Axis::vertical);
    EXPECT_TRUE(ShortcutAvailability::isRefused(commands[0], commands, refused));
    EXPECT_TRUE(ShortcutAvailability::isRefused(twin, commands, refused));
    EXPECT_FALSE(ShortcutAvailability::isRefused(commands[1], commands, refused));
}

TEST(ShortcutAvailability, onlyAShortcutThatIsOnIsRefused) {
    std::vector<SnapCommand> commands = BuiltInCommands::defaults();
    const std::vector<UUID> refused{commands[0].id, commands[1].id};
    commands[0].shortcut->enabled = false;
    commands[1].shortcut.reset();
    EXPECT_FALSE(ShortcutAvailability::isRefused(commands[0], commands, refused));
    EXPECT_FALSE(ShortcutAvailability::isRefused(commands[1], commands, refused));
}

}  // namespace
}  // namespace lumatile
