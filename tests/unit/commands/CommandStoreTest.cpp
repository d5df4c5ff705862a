#include "commands/CommandStore.h"

#include <algorithm>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "commands/BuiltInCommands.h"
#include "commands/SnapCommandCodec.h"
#include "tests/support/SnapCommandArbitrary.h"

namespace lumatile {
namespace {

std::vector<SnapCommand> builtIns() { return BuiltInCommands::defaults(); }

SnapCommand keyed(std::string nameKey, Axis axis = Axis::horizontal) {
    SnapCommand command;
    command.id = UUID::random();
    command.nameKey = std::move(nameKey);
    command.axis = axis;
    return command;
}

SnapCommand bound(std::string nameKey, Axis axis, Shortcut shortcut) {
    SnapCommand command = keyed(std::move(nameKey), axis);
    command.shortcut = shortcut;
    return command;
}

std::vector<std::string> keysOf(const std::vector<SnapCommand>& commands) {
    std::vector<std::string> keys;
    keys.reserve(commands.size());
    for (const SnapCommand& command : commands) {
        keys.push_back(command.nameKey);
    }
    return keys;
}

using Keys = std::vector<std::string>;

TEST(CommandStore, isOneThingThatEverybodyRefersTo) {
    EXPECT_FALSE(std::is_copy_constructible_v<CommandStore>);
    EXPECT_FALSE(std::is_copy_assignable_v<CommandStore>);
}

TEST(CommandStore, holdsTheBuiltInCommandsAtFirst) {
    EXPECT_EQ(CommandStore().commands, builtIns());
}

TEST(CommandStore, holdsAGivenListAsItIs) {
    EXPECT_EQ(CommandStore(std::vector<SnapCommand>{}).commands, std::vector<SnapCommand>{});
    const std::vector<SnapCommand> list{keyed("custom.b"), keyed("command.left")};
    EXPECT_EQ(CommandStore(list).commands, list);
}

TEST(CommandStoreLoading, nothingStoredGivesTheBuiltInCommands) {
    EXPECT_EQ(CommandStore::preferenceKey, "commands");
    EXPECT_EQ(CommandStore::fromStored(std::nullopt).commands, builtIns());
}

TEST(CommandStoreLoading, whatCannotBeDecodedGivesTheBuiltInCommands) {
    std::string unknownKind = CommandStore().encode();
    unknownKind.replace(unknownKind.find("\"area\""), 6, "\"maximize\"");
    ASSERT_FALSE(CommandStore::decode(unknownKind));
    for (const std::string& stored : {std::string(), std::string("{}"), std::string("[1]"),
                                      std::string("[\xFF]"), unknownKind}) {
        EXPECT_EQ(CommandStore::fromStored(stored).commands, builtIns()) << stored;
    }
}

TEST(CommandStoreLoading, anEmptyListGivesTheBuiltInCommands) {
    EXPECT_EQ(CommandStore::fromStored("[]").commands, builtIns());
}

TEST(CommandStoreLoading, aStoredListIsMerged) {
    SnapCommand left = builtIns().front();
    left.shortcut = Shortcut{4, 6144, true};
    const SnapCommand area = SnapCommand::custom("Side", 0, 0, 6, 6);
    const std::string stored =
        SnapCommandCodec::encodeList({area, left}, KeyOrder::field, JSONLayout::pretty);
    std::vector<SnapCommand> expected = builtIns();
    expected.front() = left;
    expected.push_back(area);
    EXPECT_EQ(CommandStore::fromStored(stored).commands, expected);
}

TEST(CommandStoreCoding, writesSortedKeysAndReadsThemBack) {
    CommandStore store;
    store.addCustomArea(1, 2, 3, 4);
    EXPECT_EQ(store.encode(), SnapCommandCodec::encodeList(store.commands, KeyOrder::sorted));
    EXPECT_EQ(CommandStore::decode(store.encode()), store.commands);
    EXPECT_EQ(CommandStore::fromStored(store.encode()).commands, store.commands);
    EXPECT_EQ(CommandStore::decode("[{}]"), std::nullopt);
}

TEST(CommandStoreRemoval, removesEveryCommandOfThatIdAndKeepsTheOrder) {
    SnapCommand a = keyed("custom.a");
    const SnapCommand b = keyed("custom.b");
    SnapCommand c = keyed("custom.c");
    c.id = a.id;
    const SnapCommand d = keyed("custom.d");
    CommandStore store({a, b, c, d});
    store.removeById(a.id);
    EXPECT_EQ(store.commands, (std::vector<SnapCommand>{b, d}));
}

TEST(CommandStoreRemoval, anUnknownIdChangesNothing) {
    CommandStore store;
    store.removeById(UUID::random());
    EXPECT_EQ(store.commands, builtIns());
}

TEST(CommandStoreMenus, listTheVisibleCommandsInOrder) {
    std::vector<SnapCommand> list{keyed("custom.a"), keyed("custom.b"), keyed("custom.c"),
                                  keyed("custom.d")};
    list[1].visibleInMenuBar = true;
    list[3].visibleInMenuBar = true;
    list[0].visibleInGreenButtonMenu = true;
    list[1].visibleInGreenButtonMenu = true;
    const CommandStore store(list);
    EXPECT_EQ(keysOf(store.menuBarCommands()), (Keys{"custom.b", "custom.d"}));
    EXPECT_EQ(keysOf(store.greenButtonCommands()), (Keys{"custom.a", "custom.b"}));
}

TEST(CommandStoreMenus, listEveryBuiltInCommand) {
    EXPECT_EQ(CommandStore().menuBarCommands(), builtIns());
    EXPECT_EQ(CommandStore().greenButtonCommands(), builtIns());
}

TEST(CommandStoreHotkeys, ofTheBuiltInCommandsAreTheNineteenForLandscape) {
    const std::vector<SnapCommand> commands = builtIns();
    EXPECT_EQ(CommandStore().hotkeyBindings(),
              std::vector<SnapCommand>(commands.begin(), commands.begin() + 19));
}

TEST(CommandStoreHotkeys, landscapeGoesBeforePortraitAndTheListOrderHoldsInEach) {
    const CommandStore store(
        {bound("p1", Axis::vertical, {1, 0, true}), bound("l1", Axis::horizontal, {2, 0, true}),
         bound("p2", Axis::vertical, {3, 0, true}), bound("l2", Axis::horizontal, {4, 0, true})});
    EXPECT_EQ(keysOf(store.hotkeyBindings()), (Keys{"l1", "l2", "p1", "p2"}));
}

TEST(CommandStoreHotkeys, theFirstOfTheSameCombinationKeepsIt) {
    const Shortcut shortcut{4, 6144, true};
    const CommandStore store({bound("portrait", Axis::vertical, shortcut),
                              bound("first", Axis::horizontal, shortcut),
                              bound("second", Axis::horizontal, shortcut)});
    EXPECT_EQ(keysOf(store.hotkeyBindings()), Keys{"first"});
}

TEST(CommandStoreHotkeys, keyAndModifiersTogetherMakeACombination) {
    const CommandStore store({bound("a", Axis::horizontal, {4, 6144, true}),
                              bound("b", Axis::horizontal, {4, 6400, true}),
                              bound("c", Axis::horizontal, {5, 6144, true})});
    EXPECT_EQ(keysOf(store.hotkeyBindings()), (Keys{"a", "b", "c"}));
}

TEST(CommandStoreHotkeys, disabledAndAbsentShortcutsAreNeverBoundAndTakeNothing) {
    const CommandStore store({bound("disabled", Axis::horizontal, {4, 6144, false}), keyed("none"),
                              bound("enabled", Axis::horizontal, {4, 6144, true})});
    EXPECT_EQ(keysOf(store.hotkeyBindings()), Keys{"enabled"});
}

TEST(CommandStoreHotkeys, aDisabledLandscapeTwinLeavesTheCombinationToPortrait) {
    std::vector<SnapCommand> list = builtIns();
    list.front().shortcut->enabled = false;
    const std::vector<SnapCommand> bindings = CommandStore(list).hotkeyBindings();
    ASSERT_EQ(bindings.size(), 19U);
    EXPECT_EQ(bindings.back(), list[19]);
    EXPECT_EQ(bindings.back().nameKey, "command.left");
    EXPECT_EQ(bindings.back().axis, Axis::vertical);
}

TEST(CommandStoreCounterpart, isLookedUpInTheStoredList) {
    CommandStore store;
    store.commands[19].targetSegments = {{0, 0, 5, 24}};
    const SnapCommand left = store.commands.front();
    EXPECT_EQ(store.counterpart(left, Axis::vertical), store.commands[19]);
    EXPECT_EQ(store.counterpart(left, Axis::horizontal), left);
    const SnapCommand area = SnapCommand::custom("Side", 0, 0, 6, 6);
    EXPECT_EQ(store.counterpart(area, Axis::vertical), area);
}

/// A store of custom areas that have these names.
CommandStore withAreas(const std::vector<std::string>& names) {
    CommandStore store;
    for (const std::string& name : names) {
        store.commands.push_back(SnapCommand::custom(name, 0, 0, 1, 1));
    }
    return store;
}

TEST(CommandStoreNames, theNextNameIsTheFirstThatNoCustomAreaShows) {
    struct Case {
        std::vector<std::string> names;
        std::string next;
    };
    const std::vector<Case> cases{
        {{}, "Custom Area"},
        {{"Side"}, "Custom Area"},
        {{"Custom Area"}, "Custom Area 2"},
        {{"Custom Area", "Custom Area 3"}, "Custom Area 2"},
        {{"Custom Area 2", "Custom Area 3"}, "Custom Area"},
        {{"Custom Area 3", "Custom Area", "Custom Area 2"}, "Custom Area 4"},
        {{"  Custom Area\n"}, "Custom Area 2"},
        {{"custom area", "Custom Area 1", "Custom Area 02"}, "Custom Area"},
        {{"   "}, "Custom Area"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(withAreas(each.names).nextCustomAreaName(), each.next)
            << testing::PrintToString(each.names);
    }
}

TEST(CommandStoreNames, aBlankAreaCountsUnderItsTitle) {
    // The title of this key reads like an area's name.
    SnapCommand area = keyed("custom.Area");
    area.customName = " ";
    EXPECT_EQ(area.displayName(), "Custom. Area");
    EXPECT_EQ(CommandStore({area}).nextCustomAreaName(), "Custom Area");
}

TEST(CommandStoreNames, builtInCommandsAreNotCompared) {
    CommandStore store;
    store.commands.front().customName = "Custom Area";
    EXPECT_EQ(store.nextCustomAreaName(), "Custom Area");
}

TEST(CommandStoreAdding, appendsAnAreaUnderTheNextName) {
    CommandStore store;
    const auto first = store.addCustomArea(1, 2, 3, 4);
    const auto second = store.addCustomArea(5, 6, 7, 8);
    ASSERT_EQ(store.commands.size(), 36U);
    EXPECT_EQ(store.commands[34].id, first);
    EXPECT_EQ(store.commands[34].customName, "Custom Area");
    EXPECT_EQ(store.commands[34].targetSegments, (std::vector<Segment>{{1, 2, 3, 4}}));
    EXPECT_EQ(store.commands[35].id, second);
    EXPECT_EQ(store.commands[35].customName, "Custom Area 2");
    EXPECT_TRUE(store.commands[35].isCustom());
    EXPECT_EQ(std::vector<SnapCommand>(store.commands.begin(), store.commands.begin() + 34),
              builtIns());
}

TEST(CommandStoreAdding, stopsAtTheLongestListThatCanBeReadBack) {
    CommandStore store(
        std::vector<SnapCommand>(SnapCommandCodec::maxCommands - 1, keyed("custom.a")));
    EXPECT_TRUE(store.addCustomArea(0, 0, 1, 1));
    EXPECT_EQ(store.addCustomArea(0, 0, 1, 1), std::nullopt);
    EXPECT_EQ(store.commands.size(), SnapCommandCodec::maxCommands);
    EXPECT_EQ(CommandStore::decode(store.encode()), store.commands);
}

TEST(CommandStoreRenaming, renamesTheCustomAreaOfThatId) {
    CommandStore store;
    const UUID id = store.addCustomArea(0, 0, 6, 6).value();
    const UUID other = store.addCustomArea(0, 0, 6, 6).value();
    EXPECT_TRUE(store.rename(id, "  Side  "));
    EXPECT_EQ(store.commands[34].customName, "Side");
    EXPECT_FALSE(store.rename(id, "   "));
    EXPECT_EQ(store.commands[34].customName, "Side");
    EXPECT_EQ(store.commands[35].customName, "Custom Area 2");
    EXPECT_TRUE(store.rename(other, "Side"));
    EXPECT_EQ(store.commands[35].customName, "Side");
}

TEST(CommandStoreRenaming, builtInAndUnknownIdsChangeNothing) {
    CommandStore store;
    EXPECT_FALSE(store.rename(store.commands.front().id, "Mine"));
    EXPECT_FALSE(store.rename(UUID::random(), "Mine"));
    EXPECT_EQ(store.commands, builtIns());
}

RC_GTEST_PROP(CommandStoreHotkeys, areEnabledDistinctAndComplete, ()) {
    const CommandStore store(arbitraryCommands());
    std::vector<std::pair<std::uint32_t, std::uint32_t>> combinations;
    for (const SnapCommand& command : store.hotkeyBindings()) {
        RC_ASSERT(command.shortcut.has_value());
        RC_ASSERT(command.shortcut->enabled);
        const std::pair combination(command.shortcut->carbonKeyCode,
                                    command.shortcut->carbonModifiers);
        RC_ASSERT(std::count(combinations.begin(), combinations.end(), combination) == 0);
        combinations.push_back(combination);
    }
    for (const SnapCommand& command : store.commands) {
        if (command.shortcut && command.shortcut->enabled) {
            RC_ASSERT(std::count(combinations.begin(), combinations.end(),
                                 std::pair(command.shortcut->carbonKeyCode,
                                           command.shortcut->carbonModifiers)) == 1);
        }
    }
}

}  // namespace
}  // namespace lumatile
