#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "commands/BuiltInCommands.h"
#include "commands/CommandStore.h"
#include "commands/SnapCommandCodec.h"
#include "tests/support/SnapCommandArbitrary.h"

namespace lumatile {
namespace {

std::vector<SnapCommand> builtIns() { return BuiltInCommands::defaults(); }

/// A built-in command with an id of its own, as an older or foreign list may hold it.
SnapCommand stored(std::size_t place) {
    SnapCommand command = builtIns()[place];
    command.id = UUID::random();
    return command;
}

constexpr std::size_t left = 0;
constexpr std::size_t maximize = 14;
constexpr std::size_t center = 15;
constexpr std::size_t portraitLeft = 19;

/// The built-in commands with `command` in the place of one of them.
std::vector<SnapCommand> builtInsWith(std::size_t place, const SnapCommand& command) {
    std::vector<SnapCommand> commands = builtIns();
    commands[place] = command;
    return commands;
}

TEST(CommandStoreMerge, ofNothingIsTheBuiltInCommands) {
    EXPECT_EQ(CommandStore::merged({}), builtIns());
}

TEST(CommandStoreMerge, ofTheBuiltInCommandsIsThemselves) {
    EXPECT_EQ(CommandStore::merged(builtIns()), builtIns());
}

TEST(CommandStoreMerge, keepsAChangedCommandAndAddsTheRest) {
    SnapCommand changed = stored(left);
    changed.shortcut = Shortcut{4, 6144, true};
    const std::vector<SnapCommand> merged = CommandStore::merged({changed});
    EXPECT_EQ(merged.size(), 34U);
    EXPECT_EQ(merged, builtInsWith(left, changed));
}

TEST(CommandStoreMerge, keepsEverythingElseOfAStoredCommand) {
    SnapCommand changed = stored(left);
    changed.kind = Kind::center;
    changed.targetSegments = {{0, 0, 10, 12}, {1, 2}};
    changed.activationSegments = {{5, 5, 1, 1}};
    changed.shortcut.reset();
    changed.visibleInMenuBar = false;
    changed.visibleInGreenButtonMenu = false;
    changed.group = "custom";
    changed.customName = "Mine";
    EXPECT_EQ(CommandStore::merged({changed}), builtInsWith(left, changed));
}

TEST(CommandStoreMerge, addsTheCommandsOfALaterVersionInTheirPlace) {
    std::vector<SnapCommand> older;
    for (std::size_t place = 0; place < 19; ++place) {
        older.push_back(stored(place));
    }
    const SnapCommand area = SnapCommand::custom("Side", 0, 0, 6, 6);
    older.push_back(area);
    std::vector<SnapCommand> expected(older.begin(), older.begin() + 19);
    const std::vector<SnapCommand> all = builtIns();
    expected.insert(expected.end(), all.begin() + 19, all.end());
    expected.push_back(area);
    EXPECT_EQ(CommandStore::merged(older), expected);
}

TEST(CommandStoreMerge, putsBuiltInCommandsBackIntoTheirOrder) {
    std::vector<SnapCommand> reversed = builtIns();
    std::reverse(reversed.begin(), reversed.end());
    EXPECT_EQ(CommandStore::merged(reversed), builtIns());
}

TEST(CommandStoreMerge, leavesCustomAreasAtTheEndInTheirOrder) {
    const SnapCommand first = SnapCommand::custom("First", 0, 0, 6, 6);
    const SnapCommand second = SnapCommand::custom("Second", 3, 3, 1, 1);
    std::vector<SnapCommand> expected = builtIns();
    expected.push_back(first);
    expected.push_back(second);
    EXPECT_EQ(CommandStore::merged({first, builtIns()[left], second}), expected)
        << "a custom area of one cell is the user's wish";
}

TEST(CommandStoreMerge, keepsCommandsWhoseKeyIsGone) {
    SnapCommand gone = stored(left);
    gone.nameKey = "command.leftFifth";
    SnapCommand portraitCenter = stored(center);
    portraitCenter.axis = Axis::vertical;
    std::vector<SnapCommand> expected = builtIns();
    expected.push_back(gone);
    expected.push_back(portraitCenter);
    EXPECT_EQ(CommandStore::merged({gone, portraitCenter}), expected);
}

TEST(CommandStoreMerge, matchesByKeyAndAxisTogether) {
    SnapCommand portrait = stored(portraitLeft);
    portrait.customName = "Mine";
    EXPECT_EQ(CommandStore::merged({portrait}), builtInsWith(portraitLeft, portrait));
}

TEST(CommandStoreMerge, theFirstOfDuplicatesTakesThePlaceAndTheOtherFollowsAtTheEnd) {
    const SnapCommand first = stored(left);
    SnapCommand second = stored(left);
    second.group.reset();
    second.targetSegments = {{3, 3, 1, 1}};
    std::vector<SnapCommand> expected = builtInsWith(left, first);
    expected.push_back(second);
    EXPECT_EQ(CommandStore::merged({first, second}), expected);
}

TEST(CommandStoreMerge, aCommandWithoutAGroupGetsTheBuiltInOne) {
    SnapCommand ungrouped = stored(left);
    ungrouped.group.reset();
    SnapCommand expected = ungrouped;
    expected.group = "halves";
    EXPECT_EQ(CommandStore::merged({ungrouped}), builtInsWith(left, expected));

    ungrouped.group = "";
    EXPECT_EQ(CommandStore::merged({ungrouped}), builtInsWith(left, ungrouped))
        << "an empty group is a group";
}

TEST(CommandStoreMerge, anAreaThatCollapsedToOneCellIsReset) {
    struct Case {
        std::vector<Segment> stored;
        bool isReset;
    };
    const std::vector<Segment> whole{{0, 0, 24, 12}};
    const std::vector<Case> cases{
        {{{3, 3, 1, 1}}, true},
        {{{0, 0, 1, 1}}, true},
        {{{-5, 99, 1, 1}}, true},
        {{{3, 3, 2, 1}}, false},
        {{{3, 3, 1, 2}}, false},
        {{{3, 3, 0, 0}}, false},
        {{{3, 3, 1, 1}, {3, 3, 1, 1}}, false},
        {{{3, 3, 1, 1, 1}}, false},
        {{{1, 1}}, false},
        {{{}}, false},
        {{}, false},
    };
    for (const Case& each : cases) {
        SnapCommand damaged = stored(maximize);
        damaged.targetSegments = each.stored;
        SnapCommand expected = damaged;
        if (each.isReset) {
            expected.targetSegments = whole;
        }
        EXPECT_EQ(CommandStore::merged({damaged}), builtInsWith(maximize, expected))
            << testing::PrintToString(each.stored);
    }
}

TEST(CommandStoreMerge, oneCellOnACommandWithoutAreaIsResetToNone) {
    SnapCommand damaged = stored(center);
    damaged.targetSegments = {{3, 3, 1, 1}};
    SnapCommand expected = damaged;
    expected.targetSegments.clear();
    EXPECT_EQ(CommandStore::merged({damaged}), builtInsWith(center, expected));
}

TEST(CommandStoreMerge, ofTheLongestListCanStillBeReadBack) {
    const std::vector<SnapCommand> longest(SnapCommandCodec::maxCommands,
                                           SnapCommand::custom("Side", 0, 0, 6, 6));
    const std::vector<SnapCommand> merged = CommandStore::merged(longest);
    ASSERT_EQ(merged.size(), SnapCommandCodec::maxCommands);
    EXPECT_EQ(std::vector<SnapCommand>(merged.begin(), merged.begin() + 34), builtIns());
    EXPECT_EQ(merged.back(), longest.back());
    EXPECT_EQ(CommandStore::decode(CommandStore(merged).encode()), merged);
}

RC_GTEST_PROP(CommandStoreMerge, mergedAgainChangesNothing, ()) {
    const std::vector<SnapCommand> once = CommandStore::merged(arbitraryCommands());
    RC_ASSERT(CommandStore::merged(once) == once);
}

RC_GTEST_PROP(CommandStoreMerge, beginsWithEveryBuiltInKeyAndLosesNoStoredCommand, ()) {
    const std::vector<SnapCommand> list = arbitraryCommands();
    const std::vector<SnapCommand> merged = CommandStore::merged(list);
    const std::vector<SnapCommand> all = builtIns();
    RC_ASSERT(merged.size() >= all.size());
    for (std::size_t place = 0; place < all.size(); ++place) {
        RC_ASSERT(merged[place].nameKey == all[place].nameKey);
        RC_ASSERT(merged[place].axis == all[place].axis);
    }
    for (const SnapCommand& command : list) {
        RC_ASSERT(std::count_if(merged.begin(), merged.end(), [&command](const SnapCommand& other) {
                      return other.id == command.id && other.nameKey == command.nameKey;
                  }) >= 1);
    }
}

RC_GTEST_PROP(CommandStoreMerge, keepsTheRestInStoredOrder, ()) {
    const std::vector<SnapCommand> list = arbitraryCommands();
    const std::vector<SnapCommand> merged = CommandStore::merged(list);
    auto place = list.begin();
    for (auto rest = merged.begin() + 34; rest != merged.end(); ++rest) {
        place = std::find(place, list.end(), *rest);
        RC_ASSERT(place != list.end());
        ++place;
    }
}

}  // namespace
}  // namespace lumatile
