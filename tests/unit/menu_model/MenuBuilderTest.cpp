#include "menu_model/MenuBuilder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "commands/BuiltInCommands.h"
#include "tests/support/SnapCommandArbitrary.h"

namespace lumatile {
namespace {

using Entries = std::vector<MenuEntry>;

const Entries fixedActions{ActionID::settings, ActionID::checkForUpdates, ActionID::about,
                           MenuSeparator{}, ActionID::quit};

SnapCommand builtIn(std::string name, std::optional<std::string> group, Kind kind = Kind::area) {
    SnapCommand command;
    command.nameKey = "command." + std::move(name);
    command.kind = kind;
    command.group = std::move(group);
    command.visibleInMenuBar = true;
    return command;
}

SnapCommand custom(std::string name) {
    SnapCommand command = SnapCommand::custom(std::move(name), 0, 0, 2, 2);
    command.visibleInMenuBar = true;
    return command;
}

/// `above`, a separator and the fixed actions.
Entries withActions(Entries above) {
    above.emplace_back(MenuSeparator{});
    above.insert(above.end(), fixedActions.begin(), fixedActions.end());
    return above;
}

Entries built(const std::vector<SnapCommand>& commands) {
    return MenuBuilder::build(commands, Axis::horizontal);
}

/// One line each, to be compared with what a user would read.
std::vector<std::string> lines(const Entries& entries) {
    std::vector<std::string> texts;
    for (const MenuEntry& entry : entries) {
        if (const auto* command = std::get_if<SnapCommand>(&entry)) {
            texts.push_back(command->displayName());
        } else if (const auto* header = std::get_if<MenuHeader>(&entry)) {
            texts.push_back("[" + header->title + "]");
        } else if (const auto* action = std::get_if<ActionID>(&entry)) {
            texts.push_back("<" + std::string(rawValue(*action)) + ">");
        } else {
            texts.emplace_back("-");
        }
    }
    return texts;
}

TEST(MenuBuilder, withoutVisibleCommandsOnlyTheActionsAreLeft) {
    EXPECT_EQ(built({}), fixedActions);
    SnapCommand hidden = builtIn("left", "halves");
    hidden.visibleInMenuBar = false;
    EXPECT_EQ(built({hidden}), fixedActions);
}

TEST(MenuBuilder, withOnlyCustomAreasTheirTitleComesFirst) {
    const SnapCommand one = custom("One");
    const SnapCommand two = custom("Two");
    EXPECT_EQ(built({one, two}), withActions({MenuHeader{"Your Areas"}, one, two}));
}

TEST(MenuBuilder, commandsOfTheOtherAxisNeverAppear) {
    SnapCommand tall = builtIn("top", "halves");
    tall.axis = Axis::vertical;
    const SnapCommand wide = builtIn("left", "halves");
    EXPECT_EQ(built({tall}), fixedActions);
    EXPECT_EQ(built({tall, wide}), withActions({wide}));
    EXPECT_EQ(MenuBuilder::build({tall, wide}, Axis::vertical), withActions({tall}));
}

TEST(MenuBuilder, aGroupThatIsInterruptedAppearsTwice) {
    const SnapCommand left = builtIn("left", "halves");
    const SnapCommand third = builtIn("leftThird", "thirds");
    const SnapCommand right = builtIn("right", "halves");
    EXPECT_EQ(built({left, third, right}),
              withActions({left, MenuSeparator{}, third, MenuSeparator{}, right}));
}

TEST(MenuBuilder, aBuiltInCommandInTheGroupCustomGetsNoTitle) {
    const SnapCommand posing = builtIn("left", "custom");
    EXPECT_EQ(built({posing}), withActions({posing}));
    // The group counts as begun, so areas behind it get none either.
    const SnapCommand mine = custom("Mine");
    EXPECT_EQ(built({mine, posing}), withActions({posing, mine}));
}

TEST(MenuBuilder, customAreasComeAfterAllBuiltInCommands) {
    const SnapCommand mine = custom("Mine");
    const SnapCommand left = builtIn("left", "halves");
    EXPECT_EQ(built({mine, left}),
              withActions({left, MenuSeparator{}, MenuHeader{"Your Areas"}, mine}));
}

TEST(MenuBuilder, withoutAGroupTheKindDecides) {
    const SnapCommand area = builtIn("a", std::nullopt);
    const SnapCommand center = builtIn("b", std::nullopt, Kind::center);
    const SnapCommand restore = builtIn("c", std::nullopt, Kind::restore);
    const SnapCommand next = builtIn("d", std::nullopt, Kind::nextDisplay);
    const SnapCommand previous = builtIn("e", std::nullopt, Kind::previousDisplay);
    EXPECT_EQ(built({area, center, restore, next, previous}),
              withActions({area, MenuSeparator{}, center, restore, next, previous}));
    // The stated groups of these names are the same ones.
    const SnapCommand stated = builtIn("f", "areas");
    EXPECT_EQ(built({area, stated}), withActions({area, stated}));
}

TEST(MenuBuilder, groupsAreComparedAsExactStrings) {
    const SnapCommand lower = builtIn("a", "halves");
    const SnapCommand upper = builtIn("b", "Halves");
    const SnapCommand empty = builtIn("c", "");
    EXPECT_EQ(built({lower, upper, empty}),
              withActions({lower, MenuSeparator{}, upper, MenuSeparator{}, empty}));
}

TEST(MenuBuilder, aCustomAreaOfAnotherGroupIsSeparatedFromItsTitle) {
    SnapCommand strange = custom("Strange");
    strange.group = "thirds";
    const SnapCommand usual = custom("Usual");
    // The title stands for the group "custom", which then changes twice.
    EXPECT_EQ(built({strange, usual}),
              withActions({MenuHeader{"Your Areas"}, MenuSeparator{}, strange, MenuSeparator{},
                           MenuHeader{"Your Areas"}, usual}));
}

TEST(MenuBuilder, theBuiltInMenuReadsAsUsersKnowIt) {
    std::vector<SnapCommand> commands = BuiltInCommands::defaults();
    commands.push_back(custom("My corner"));
    const std::vector<std::string> expected{"Left Half",
                                            "Right Half",
                                            "Top Half",
                                            "Bottom Half",
                                            "-",
                                            "Top Left",
                                            "Top Right",
                                            "Bottom Left",
                                            "Bottom Right",
                                            "-",
                                            "Left Third",
                                            "Center Third",
                                            "Right Third",
                                            "-",
                                            "Left Two Thirds",
                                            "Center Two Thirds",
                                            "Right Two Thirds",
                                            "-",
                                            "Maximize",
                                            "Center",
                                            "Restore",
                                            "-",
                                            "Next Display",
                                            "Previous Display",
                                            "-",
                                            "[Your Areas]",
                                            "My corner",
                                            "-",
                                            "<settings>",
                                            "<checkForUpdates>",
                                            "<about>",
                                            "-",
                                            "<quit>"};
    EXPECT_EQ(lines(built(commands)), expected);
}

RC_GTEST_PROP(MenuBuilder, everyListedCommandAppearsOnceAndInOrder, ()) {
    const std::vector<SnapCommand> commands = arbitraryCommands();
    const Axis axis = *rc::gen::element(Axis::horizontal, Axis::vertical);
    const Entries entries = MenuBuilder::build(commands, axis);
    std::vector<SnapCommand> expected;
    for (const bool isCustom : {false, true}) {
        for (const SnapCommand& each : commands) {
            if (each.visibleInMenuBar && each.axis == axis &&
                each.nameKey.starts_with("custom.") == isCustom) {
                expected.push_back(each);
            }
        }
    }
    std::vector<SnapCommand> shown;
    for (const MenuEntry& entry : entries) {
        if (const auto* command = std::get_if<SnapCommand>(&entry)) {
            shown.push_back(*command);
        }
    }
    RC_ASSERT(shown == expected);
    RC_ASSERT(entries.size() >= fixedActions.size());
    RC_ASSERT(std::equal(fixedActions.rbegin(), fixedActions.rend(), entries.rbegin()));
}

RC_GTEST_PROP(MenuBuilder, separatorsAreNeverFirstOrDoubled, ()) {
    const Entries entries = MenuBuilder::build(arbitraryCommands(), Axis::horizontal);
    const auto isSeparator = [](const MenuEntry& entry) {
        return std::holds_alternative<MenuSeparator>(entry);
    };
    RC_ASSERT(!isSeparator(entries.front()));
    RC_ASSERT(!isSeparator(entries.back()));
    RC_ASSERT(std::adjacent_find(entries.begin(), entries.end(),
                                 [&](const MenuEntry& left, const MenuEntry& right) {
                                     return isSeparator(left) && isSeparator(right);
                                 }) == entries.end());
}

}  // namespace
}  // namespace lumatile
