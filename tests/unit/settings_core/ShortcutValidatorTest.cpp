#include "settings_core/ShortcutValidator.h"

#include <gtest/gtest.h>

#include "commands/BuiltInCommands.h"

namespace lumatile {
namespace {

constexpr std::uint32_t controlOption = ClassicModifier::control | ClassicModifier::option;
constexpr std::uint32_t leftArrow = 123;
constexpr Shortcut shortcut{leftArrow, controlOption, true};

SnapCommand command(const std::string& name, const std::optional<Shortcut>& keys) {
    SnapCommand made = SnapCommand::custom(name, 0, 0, 1, 1);
    made.shortcut = keys;
    return made;
}

TEST(ShortcutValidator, theFirstHolderOfTheKeysIsTheConflict) {
    const std::vector<SnapCommand> commands{
        command("none", std::nullopt), command("first", shortcut), command("second", shortcut)};
    const auto found = ShortcutValidator::conflict(shortcut, commands, std::nullopt);
    ASSERT_TRUE(found);
    EXPECT_EQ(*found, commands[1]);
}

TEST(ShortcutValidator, aCommandIsNoConflictWithItself) {
    const std::vector<SnapCommand> commands{command("own", shortcut)};
    EXPECT_FALSE(ShortcutValidator::conflict(shortcut, commands, commands[0].id));
    EXPECT_TRUE(ShortcutValidator::conflict(shortcut, commands, std::nullopt));
}

TEST(ShortcutValidator, aDisabledShortcutIsNoConflict) {
    const std::vector<SnapCommand> commands{
        command("off", Shortcut{leftArrow, controlOption, false})};
    EXPECT_FALSE(ShortcutValidator::conflict(shortcut, commands, std::nullopt));
}

TEST(ShortcutValidator, whetherTheRecordedOneIsOnDoesNotMatter) {
    const std::vector<SnapCommand> commands{command("on", shortcut)};
    EXPECT_TRUE(
        ShortcutValidator::conflict({leftArrow, controlOption, false}, commands, std::nullopt));
}

TEST(ShortcutValidator, otherKeysAndOtherModifiersAreNoConflict) {
    const std::vector<SnapCommand> commands{command("one", shortcut)};
    EXPECT_FALSE(ShortcutValidator::conflict({124, controlOption, true}, commands, std::nullopt));
    EXPECT_FALSE(ShortcutValidator::conflict({leftArrow, ClassicModifier::control, true}, commands,
                                             std::nullopt));
}

TEST(ShortcutValidator, theTwinOfABuiltInCommandCounts) {
    const std::vector<SnapCommand> commands = BuiltInCommands::defaults();
    const SnapCommand& left = commands.front();
    ASSERT_TRUE(left.shortcut);
    const auto found = ShortcutValidator::conflict(*left.shortcut, commands, left.id);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->nameKey, left.nameKey);
    EXPECT_EQ(found->axis, Axis::vertical);
}

TEST(ShortcutValidator, anyOfTheFourModifiersIsEnough) {
    for (const std::uint32_t modifier : {0x100U, 0x200U, 0x800U, 0x1000U}) {
        EXPECT_TRUE(ShortcutValidator::isAcceptable({0, modifier, true})) << modifier;
    }
}

TEST(ShortcutValidator, aBareKeyIsRefused) {
    EXPECT_FALSE(ShortcutValidator::isAcceptable({0, 0, true}));
}

TEST(ShortcutValidator, capsLockOrFnAloneIsRefused) {
    constexpr std::uint32_t capsLock = 0x400;
    constexpr std::uint32_t function = 0x20000;
    EXPECT_FALSE(ShortcutValidator::isAcceptable({0, capsLock, true}));
    EXPECT_FALSE(ShortcutValidator::isAcceptable({0, function | capsLock, true}));
}

TEST(ShortcutValidator, onlyABareEscapeAbandons) {
    constexpr std::uint32_t escape = 53;
    EXPECT_TRUE(ShortcutValidator::isAbandoning({escape, 0, true}));
    EXPECT_FALSE(ShortcutValidator::isAbandoning({escape, ClassicModifier::shift, true}));
    EXPECT_FALSE(ShortcutValidator::isAbandoning({leftArrow, 0, true}));
}

}  // namespace
}  // namespace lumatile
