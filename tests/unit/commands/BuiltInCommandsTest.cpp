#include "commands/BuiltInCommands.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "geometry/Grid.h"

namespace lumatile {
namespace {

const SnapCommand& builtIn(const std::vector<SnapCommand>& commands, std::string_view nameKey,
                           Axis axis) {
    const auto place =
        std::find_if(commands.begin(), commands.end(), [&](const SnapCommand& command) {
            return command.nameKey == nameKey && command.axis == axis;
        });
    if (place == commands.end()) {
        throw std::out_of_range(std::string(nameKey));
    }
    return *place;
}

struct Row {
    std::string nameKey;
    std::string group;
    Kind kind;
    std::vector<Segment> target;
    std::vector<Segment> activation;
    std::uint32_t keyCode;
    std::uint32_t modifiers;
};

TEST(BuiltInCommands, areTheseInThisOrder) {
    const std::vector<Row> rows{
        // Landscape.
        {"command.left", "halves", Kind::area, {{0, 0, 12, 12}}, {{0, 1, 1, 10}}, 123, 6144},
        {"command.right", "halves", Kind::area, {{12, 0, 12, 12}}, {{23, 1, 1, 10}}, 124, 6144},
        {"command.top", "halves", Kind::area, {{0, 0, 24, 6}}, {}, 126, 6144},
        {"command.bottom", "halves", Kind::area, {{0, 6, 24, 6}}, {}, 125, 6144},
        {"command.topLeft", "quarters", Kind::area, {{0, 0, 12, 6}}, {{0, 0, 1, 1}}, 32, 6144},
        {"command.topRight", "quarters", Kind::area, {{12, 0, 12, 6}}, {{23, 0, 1, 1}}, 34, 6144},
        {"command.bottomLeft", "quarters", Kind::area, {{0, 6, 12, 6}}, {{0, 11, 1, 1}}, 38, 6144},
        {"command.bottomRight",
         "quarters",
         Kind::area,
         {{12, 6, 12, 6}},
         {{23, 11, 1, 1}},
         40,
         6144},
        {"command.leftThird", "thirds", Kind::area, {{0, 0, 8, 12}}, {{1, 11, 7, 1}}, 2, 6144},
        {"command.centerThird", "thirds", Kind::area, {{8, 0, 8, 12}}, {{8, 11, 8, 1}}, 3, 6144},
        {"command.rightThird", "thirds", Kind::area, {{16, 0, 8, 12}}, {{16, 11, 7, 1}}, 5, 6144},
        {"command.leftTwoThirds", "twoThirds", Kind::area, {{0, 0, 16, 12}}, {}, 14, 6144},
        {"command.centerTwoThirds", "twoThirds", Kind::area, {{4, 0, 16, 12}}, {}, 15, 6144},
        {"command.rightTwoThirds", "twoThirds", Kind::area, {{8, 0, 16, 12}}, {}, 17, 6144},
        {"command.maximize", "whole", Kind::area, {{0, 0, 24, 12}}, {{1, 0, 22, 1}}, 36, 6144},
        {"command.center", "whole", Kind::center, {}, {}, 8, 6144},
        {"command.restore", "whole", Kind::restore, {}, {}, 51, 6144},
        {"command.nextDisplay", "displays", Kind::nextDisplay, {}, {}, 124, 6400},
        {"command.previousDisplay", "displays", Kind::previousDisplay, {}, {}, 123, 6400},
        // Portrait.
        {"command.left", "halves", Kind::area, {{0, 0, 6, 24}}, {{0, 1, 1, 22}}, 123, 6144},
        {"command.right", "halves", Kind::area, {{6, 0, 6, 24}}, {{11, 1, 1, 22}}, 124, 6144},
        {"command.top", "halves", Kind::area, {{0, 0, 12, 12}}, {}, 126, 6144},
        {"command.bottom", "halves", Kind::area, {{0, 12, 12, 12}}, {{1, 23, 10, 1}}, 125, 6144},
        {"command.topLeft", "quarters", Kind::area, {{0, 0, 6, 12}}, {{0, 0, 1, 1}}, 32, 6144},
        {"command.topRight", "quarters", Kind::area, {{6, 0, 6, 12}}, {{11, 0, 1, 1}}, 34, 6144},
        {"command.bottomLeft", "quarters", Kind::area, {{0, 12, 6, 12}}, {{0, 23, 1, 1}}, 38, 6144},
        {"command.bottomRight",
         "quarters",
         Kind::area,
         {{6, 12, 6, 12}},
         {{11, 23, 1, 1}},
         40,
         6144},
        {"command.leftThird", "thirds", Kind::area, {{0, 0, 12, 8}}, {}, 2, 6144},
        {"command.centerThird", "thirds", Kind::area, {{0, 8, 12, 8}}, {}, 3, 6144},
        {"command.rightThird", "thirds", Kind::area, {{0, 16, 12, 8}}, {}, 5, 6144},
        {"command.leftTwoThirds", "twoThirds", Kind::area, {{0, 0, 12, 16}}, {}, 14, 6144},
        {"command.centerTwoThirds", "twoThirds", Kind::area, {{0, 4, 12, 16}}, {}, 15, 6144},
        {"command.rightTwoThirds", "twoThirds", Kind::area, {{0, 8, 12, 16}}, {}, 17, 6144},
        {"command.maximize", "whole", Kind::area, {{0, 0, 12, 24}}, {{1, 0, 10, 1}}, 36, 6144},
    };
    const std::vector<SnapCommand> commands = BuiltInCommands::defaults();
    ASSERT_EQ(commands.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Row& row = rows[i];
        SCOPED_TRACE(row.nameKey + (i < 19 ? " landscape" : " portrait"));
        SnapCommand expected;
        expected.nameKey = row.nameKey;
        expected.axis = i < 19 ? Axis::horizontal : Axis::vertical;
        expected.id = SnapCommand::derivedId(expected.nameKey, expected.axis);
        expected.kind = row.kind;
        expected.targetSegments = row.target;
        expected.activationSegments = row.activation;
        expected.shortcut = Shortcut{row.keyCode, row.modifiers, true};
        expected.visibleInMenuBar = true;
        expected.visibleInGreenButtonMenu = true;
        expected.group = row.group;
        EXPECT_EQ(commands[i], expected);
    }
}

TEST(BuiltInCommands, areThirtyFourWithNineteenForLandscapeFirst) {
    const std::vector<SnapCommand> commands = BuiltInCommands::defaults();
    ASSERT_EQ(commands.size(), 34U);
    std::set<std::pair<std::string, Axis>> keys;
    for (std::size_t i = 0; i < commands.size(); ++i) {
        EXPECT_EQ(commands[i].axis, i < 19 ? Axis::horizontal : Axis::vertical) << i;
        keys.emplace(commands[i].nameKey, commands[i].axis);
    }
    EXPECT_EQ(keys.size(), 34U);
}

TEST(BuiltInCommands, haveDistinctIdsThatAreTheSameEveryTime) {
    const std::vector<SnapCommand> commands = BuiltInCommands::defaults();
    std::unordered_set<UUID> ids;
    for (const SnapCommand& command : commands) {
        ids.insert(command.id);
    }
    EXPECT_EQ(ids.size(), 34U);
    EXPECT_EQ(BuiltInCommands::defaults(), commands);
}

TEST(BuiltInCommands, belongToTheCaller) {
    std::vector<SnapCommand> changed = BuiltInCommands::defaults();
    changed.front().nameKey = "command.changed";
    changed.pop_back();
    EXPECT_EQ(BuiltInCommands::defaults().front().nameKey, "command.left");
    EXPECT_EQ(BuiltInCommands::defaults().size(), 34U);
}

TEST(BuiltInCommands, twinsShareTheirShortcutAndFourHaveNone) {
    std::map<std::string, std::vector<SnapCommand>> byKey;
    for (const SnapCommand& command : BuiltInCommands::defaults()) {
        byKey[command.nameKey].push_back(command);
    }
    std::vector<std::string> single;
    for (const auto& [nameKey, commands] : byKey) {
        if (commands.size() == 1) {
            single.push_back(nameKey);
            continue;
        }
        ASSERT_EQ(commands.size(), 2U) << nameKey;
        EXPECT_EQ(commands[0].shortcut, commands[1].shortcut) << nameKey;
        EXPECT_EQ(commands[0].group, commands[1].group) << nameKey;
        EXPECT_NE(commands[0].id, commands[1].id) << nameKey;
    }
    EXPECT_EQ(single, (std::vector<std::string>{"command.center", "command.nextDisplay",
                                                "command.previousDisplay", "command.restore"}));
}

TEST(BuiltInCommands, areNamedByTheMainTable) {
    const std::vector<std::pair<std::string, std::string>> names{
        {"command.left", "Left Half"},
        {"command.right", "Right Half"},
        {"command.top", "Top Half"},
        {"command.bottom", "Bottom Half"},
        {"command.topLeft", "Top Left"},
        {"command.topRight", "Top Right"},
        {"command.bottomLeft", "Bottom Left"},
        {"command.bottomRight", "Bottom Right"},
        {"command.leftThird", "Left Third"},
        {"command.centerThird", "Center Third"},
        {"command.rightThird", "Right Third"},
        {"command.leftTwoThirds", "Left Two Thirds"},
        {"command.centerTwoThirds", "Center Two Thirds"},
        {"command.rightTwoThirds", "Right Two Thirds"},
        {"command.maximize", "Maximize"},
        {"command.center", "Center"},
        {"command.restore", "Restore"},
        {"command.nextDisplay", "Next Display"},
        {"command.previousDisplay", "Previous Display"},
    };
    ASSERT_EQ(names.size(), 19U);
    for (const auto& [nameKey, name] : names) {
        EXPECT_EQ(BuiltInCommands::name(nameKey), name) << nameKey;
    }
}

TEST(BuiltInCommands, portraitBandsHaveNamesOfTheirOwn) {
    const std::map<std::string, std::string> names{
        {"command.leftThird", "Top Third"},
        {"command.centerThird", "Middle Third"},
        {"command.rightThird", "Bottom Third"},
        {"command.leftTwoThirds", "Top Two Thirds"},
        {"command.centerTwoThirds", "Middle Two Thirds"},
        {"command.rightTwoThirds", "Bottom Two Thirds"},
    };
    ASSERT_EQ(names.size(), 6U);
    for (const SnapCommand& command : BuiltInCommands::defaults()) {
        const auto name = BuiltInCommands::portraitName(command.nameKey);
        const auto expected = names.find(command.nameKey);
        EXPECT_EQ(name.has_value(), expected != names.end()) << command.nameKey;
        if (name && expected != names.end()) {
            EXPECT_EQ(*name, expected->second) << command.nameKey;
        }
    }
}

TEST(BuiltInCommands, noNameForAnyOtherKey) {
    for (const std::string nameKey :
         {"", "command.", "left", "Command.left", "command.left ", "custom.left"}) {
        EXPECT_FALSE(BuiltInCommands::name(nameKey)) << nameKey;
        EXPECT_FALSE(BuiltInCommands::portraitName(nameKey)) << nameKey;
    }
}

TEST(BuiltInCommands, showTheNameOfTheirAxis) {
    const std::vector<SnapCommand> commands = BuiltInCommands::defaults();
    const auto shown = [&commands](std::string_view nameKey, Axis axis) {
        return builtIn(commands, nameKey, axis).displayName();
    };
    EXPECT_EQ(shown("command.rightThird", Axis::vertical), "Bottom Third");
    EXPECT_EQ(shown("command.rightThird", Axis::horizontal), "Right Third");
    EXPECT_EQ(shown("command.left", Axis::vertical), "Left Half");
    EXPECT_EQ(shown("command.left", Axis::horizontal), "Left Half");
    EXPECT_EQ(shown("command.centerTwoThirds", Axis::vertical), "Middle Two Thirds");
    EXPECT_EQ(shown("command.nextDisplay", Axis::horizontal), "Next Display");
}

TEST(BuiltInCommands, leftThirdIsActivatedAtTheLeftOfTheBottomRow) {
    const std::vector<SnapCommand> commands = BuiltInCommands::defaults();
    const Rect strip =
        Grid::rect(builtIn(commands, "command.leftThird", Axis::horizontal).activationArea(),
                   Rect{0, 0, 1920, 1080}, Orientation::horizontal);
    EXPECT_EQ(strip, (Rect{80, 990, 560, 90}));
}

TEST(BuiltInCommands, noTwoAreActivatedByTheSameCellOfAScreen) {
    const std::vector<SnapCommand> commands = BuiltInCommands::defaults();
    for (const Axis axis : {Axis::horizontal, Axis::vertical}) {
        std::set<std::pair<std::int64_t, std::int64_t>> cells;
        for (const SnapCommand& command : commands) {
            if (command.axis != axis) {
                continue;
            }
            for (const CellRect& strip : command.activationArea().segments) {
                for (std::int64_t x = strip.ox; x < strip.ox + strip.w; ++x) {
                    for (std::int64_t y = strip.oy; y < strip.oy + strip.h; ++y) {
                        EXPECT_TRUE(cells.emplace(x, y).second)
                            << command.nameKey << " " << x << " " << y;
                    }
                }
            }
        }
        // The whole border of a 24 by 12 grid.
        EXPECT_EQ(cells.size(), 68U) << rawValue(axis);
    }
}

}  // namespace
}  // namespace lumatile
