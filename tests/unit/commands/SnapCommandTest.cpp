#include "commands/SnapCommand.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "commands/BuiltInCommands.h"
#include "commands/SnapCommandCodec.h"

namespace lumatile {
namespace {

SnapCommand keyed(std::string nameKey, Axis axis = Axis::horizontal) {
    SnapCommand command;
    command.nameKey = std::move(nameKey);
    command.axis = axis;
    return command;
}

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

TEST(SnapCommand, aCustomAreaIsOneBlockOnTheLandscapeGrid) {
    const SnapCommand command = SnapCommand::custom("Side", 1, 2, 3, 4);
    EXPECT_EQ(command.nameKey, "custom." + command.id.lowercaseText());
    EXPECT_EQ(command.axis, Axis::horizontal);
    EXPECT_EQ(command.kind, Kind::area);
    EXPECT_EQ(command.targetSegments, (std::vector<Segment>{{1, 2, 3, 4}}));
    EXPECT_TRUE(command.activationSegments.empty());
    EXPECT_EQ(command.shortcut, std::nullopt);
    EXPECT_TRUE(command.visibleInMenuBar);
    EXPECT_FALSE(command.visibleInGreenButtonMenu);
    EXPECT_EQ(command.group, "custom");
    EXPECT_EQ(command.customName, "Side");
    EXPECT_TRUE(command.isCustom());
}

TEST(SnapCommand, everyCustomAreaHasItsOwnRandomId) {
    EXPECT_NE(SnapCommand::custom("Same", 0, 0, 1, 1).id,
              SnapCommand::custom("Same", 0, 0, 1, 1).id);
}

TEST(SnapCommand, isCustomByTheBeginningOfItsKeyAlone) {
    EXPECT_TRUE(keyed("custom.").isCustom());
    EXPECT_TRUE(keyed("custom.anything").isCustom());
    for (const std::string nameKey : {"", "custom", "Custom.x", " custom.x", "command.left"}) {
        EXPECT_FALSE(keyed(nameKey).isCustom()) << nameKey;
    }
    SnapCommand grouped = keyed("command.left");
    grouped.group = "custom";
    EXPECT_FALSE(grouped.isCustom());
}

TEST(SnapCommandRename, builtInCommandsKeepTheirName) {
    SnapCommand command = BuiltInCommands::defaults().front();
    EXPECT_FALSE(command.rename("Mine"));
    EXPECT_EQ(command, BuiltInCommands::defaults().front());
}

TEST(SnapCommandRename, blankNamesAreRefused) {
    SnapCommand command = SnapCommand::custom("Old", 0, 0, 1, 1);
    for (const std::string name : {"", "   ", "\t\n\r", "\u00A0\u3000\u2028"}) {
        EXPECT_FALSE(command.rename(name)) << testing::PrintToString(name);
        EXPECT_EQ(command.customName, "Old");
    }
}

TEST(SnapCommandRename, trimsAndThenKeepsTheFirstFortyCharacters) {
    SnapCommand command = SnapCommand::custom("Old", 0, 0, 1, 1);
    EXPECT_TRUE(command.rename("  New name\n"));
    EXPECT_EQ(command.customName, "New name");
    EXPECT_TRUE(command.rename(std::string(50, 'x')));
    EXPECT_EQ(command.customName, std::string(40, 'x'));
    EXPECT_TRUE(command.rename("   " + std::string(40, 'y') + "   "));
    EXPECT_EQ(command.customName, std::string(40, 'y'));
    EXPECT_TRUE(command.rename(std::string(39, 'z') + " cut"));
    EXPECT_EQ(command.customName, std::string(39, 'z') + " ")
        << "white space that the cut brings to the end stays";
}

TEST(SnapCommandRename, countsCharactersAndNotBytes) {
    SnapCommand command = SnapCommand::custom("Old", 0, 0, 1, 1);
    const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";
    EXPECT_TRUE(command.rename(repeated(family, 41)));
    EXPECT_EQ(command.customName, repeated(family, 40));
    const std::string flag = "\U0001F1E8\U0001F1ED";
    EXPECT_TRUE(command.rename("x" + repeated(flag, 50)));
    EXPECT_EQ(command.customName, "x" + repeated(flag, 39));
    const std::string accented = "e\u0301";
    EXPECT_TRUE(command.rename(repeated(accented, 40) + "x"));
    EXPECT_EQ(command.customName, repeated(accented, 40));
}

TEST(SnapCommandRename, refusesTextThatIsNotUTF8) {
    SnapCommand command = SnapCommand::custom("Old", 0, 0, 1, 1);
    EXPECT_FALSE(command.rename("New \xC3"));
    EXPECT_FALSE(command.rename("\xED\xA0\x80"));
    EXPECT_EQ(command.customName, "Old");
}

TEST(SnapCommandRename, aNameOfPiledUpAccentsCanStillBeReadBack) {
    SnapCommand command = SnapCommand::custom("Old", 0, 0, 1, 1);
    const std::string pile = "a" + repeated("\u0301", 100);
    ASSERT_TRUE(command.rename(repeated(pile, 40)));
    EXPECT_EQ(command.customName, repeated(pile, 5));
    EXPECT_EQ(
        SnapCommandCodec::decodeList(SnapCommandCodec::encodeList({command}, KeyOrder::field)),
        std::vector<SnapCommand>{command});

    EXPECT_FALSE(command.rename("a" + repeated("\u0301", 4000))) << "no whole character fits";
    EXPECT_EQ(command.customName, repeated(pile, 5));
}

TEST(SnapCommandName, theUsersOwnNameGoesFirst) {
    SnapCommand command = keyed("command.leftThird", Axis::vertical);
    EXPECT_EQ(command.displayName(), "Top Third");
    command.customName = " \tMine \n";
    EXPECT_EQ(command.displayName(), "Mine");
    command.customName = " \n\u3000";
    EXPECT_EQ(command.displayName(), "Top Third");
    command.customName = "";
    EXPECT_EQ(command.displayName(), "Top Third");
}

TEST(SnapCommandName, portraitFallsBackToTheMainTable) {
    EXPECT_EQ(keyed("command.maximize", Axis::vertical).displayName(), "Maximize");
    EXPECT_EQ(keyed("command.leftThird", Axis::horizontal).displayName(), "Left Third");
}

TEST(SnapCommandName, aBlankCustomAreaShowsTheTitleOfItsKey) {
    SnapCommand command = SnapCommand::custom("  ", 0, 0, 1, 1);
    EXPECT_EQ(command.displayName(), "Custom." + command.id.lowercaseText());
    command.customName.reset();
    EXPECT_EQ(command.displayName(), "Custom." + command.id.lowercaseText());
    EXPECT_EQ(keyed("leftFifth").displayName(), "Left Fifth");
}

TEST(SnapCommandCounterpart, isThePortraitTwin) {
    const std::vector<SnapCommand> list = BuiltInCommands::defaults();
    const SnapCommand& landscape = list[8];
    ASSERT_EQ(landscape.nameKey, "command.leftThird");
    const SnapCommand& twin = landscape.counterpart(list, Axis::vertical);
    EXPECT_EQ(twin.nameKey, "command.leftThird");
    EXPECT_EQ(twin.axis, Axis::vertical);
    EXPECT_EQ(twin.targetSegments, (std::vector<Segment>{{0, 0, 12, 8}}));
    EXPECT_EQ(twin.counterpart(list, Axis::horizontal), landscape);
}

TEST(SnapCommandCounterpart, isTheCommandItselfOnItsOwnAxis) {
    const std::vector<SnapCommand> list = BuiltInCommands::defaults();
    SnapCommand changed = list.front();
    changed.customName = "Changed";
    EXPECT_EQ(&changed.counterpart(list, Axis::horizontal), &changed)
        << "even when the list holds another of that key";
}

TEST(SnapCommandCounterpart, isTheCommandItselfWithoutATwin) {
    std::vector<SnapCommand> list = BuiltInCommands::defaults();
    const SnapCommand area = SnapCommand::custom("Side", 0, 0, 6, 6);
    list.push_back(area);
    EXPECT_EQ(&area.counterpart(list, Axis::vertical), &area);
    const SnapCommand center = keyed("command.center");
    EXPECT_EQ(&center.counterpart(list, Axis::vertical), &center);
    EXPECT_EQ(&center.counterpart({}, Axis::vertical), &center);
}

TEST(SnapCommandCounterpart, isTheFirstOfSeveralTwins) {
    std::vector<SnapCommand> list{keyed("command.left"), keyed("command.left", Axis::vertical),
                                  keyed("command.left", Axis::vertical)};
    EXPECT_EQ(&list[0].counterpart(list, Axis::vertical), &list[1]);
}

TEST(SnapCommand, areasAreMadeOfTheWholeSegments) {
    SnapCommand command = keyed("custom.x");
    command.targetSegments = {{0, 0, 6, 6}, {1, 2}, {18, 6, 6, 6}};
    command.activationSegments = {{0, 0, 1, 1}};
    EXPECT_EQ(command.targetArea(), Area({CellRect{0, 0, 6, 6}, CellRect{18, 6, 6, 6}}));
    EXPECT_EQ(command.activationArea(), Area(CellRect{0, 0, 1, 1}));
}

TEST(SnapCommand, isEqualFieldByField) {
    const SnapCommand original = BuiltInCommands::defaults().front();
    const auto changed = [&original](auto change) {
        SnapCommand command = original;
        change(command);
        return command;
    };
    EXPECT_EQ(changed([](SnapCommand&) {}), original);
    EXPECT_NE(changed([](SnapCommand& c) { c.id = UUID::random(); }), original);
    EXPECT_NE(changed([](SnapCommand& c) { c.nameKey += "x"; }), original);
    EXPECT_NE(changed([](SnapCommand& c) { c.axis = Axis::vertical; }), original);
    EXPECT_NE(changed([](SnapCommand& c) { c.kind = Kind::center; }), original);
    EXPECT_NE(changed([](SnapCommand& c) { c.targetSegments.clear(); }), original);
    EXPECT_NE(changed([](SnapCommand& c) { c.activationSegments.clear(); }), original);
    EXPECT_NE(changed([](SnapCommand& c) { c.shortcut.reset(); }), original);
    EXPECT_NE(changed([](SnapCommand& c) { c.shortcut->enabled = false; }), original);
    EXPECT_NE(changed([](SnapCommand& c) { c.visibleInMenuBar = false; }), original);
    EXPECT_NE(changed([](SnapCommand& c) { c.visibleInGreenButtonMenu = false; }), original);
    EXPECT_NE(changed([](SnapCommand& c) { c.group.reset(); }), original);
    EXPECT_NE(changed([](SnapCommand& c) { c.customName = ""; }), original);
}

}  // namespace
}  // namespace lumatile
