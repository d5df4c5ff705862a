#include "drag_snap/ActivationResolver.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "commands/BuiltInCommands.h"

namespace lumatile {
namespace {

constexpr Rect landscape{0, 24, 2400, 1200};  // Cells of 100 by 100.
constexpr Rect portrait{2400, 0, 1200, 2400};

SnapCommand area(std::string name, std::vector<Segment> target, std::vector<Segment> activation,
                 Axis axis = Axis::horizontal) {
    SnapCommand command;
    command.nameKey = std::move(name);
    command.kind = Kind::area;
    command.axis = axis;
    command.targetSegments = std::move(target);
    command.activationSegments = std::move(activation);
    return command;
}

/// The key of the command that a drop there selects; empty when it selects none.
std::string chosen(const std::vector<SnapCommand>& commands, const Point& point,
                   const Rect& screen = landscape) {
    const auto command =
        ActivationResolver().resolve(point, screen, orientationOf(screen), commands);
    return command ? command->nameKey : "";
}

TEST(ActivationResolver, everyCellOfTheBuiltInCommandsOnLandscape) {
    const auto commands = BuiltInCommands::defaults();
    for (int column = 0; column < 24; ++column) {
        for (int row = 0; row < 12; ++row) {
            std::string expected;
            const bool left = column == 0;
            const bool right = column == 23;
            if (row == 0) {
                expected = left ? "topLeft" : right ? "topRight" : "maximize";
            } else if (row == 11) {
                expected = left          ? "bottomLeft"
                           : right       ? "bottomRight"
                           : column < 8  ? "leftThird"
                           : column < 16 ? "centerThird"
                                         : "rightThird";
            } else if (left || right) {
                expected = left ? "left" : "right";
            }
            const Point middle{landscape.x + 100 * column + 50, landscape.y + 100 * row + 50};
            EXPECT_EQ(chosen(commands, middle), expected.empty() ? "" : "command." + expected)
                << column << ", " << row;
        }
    }
}

TEST(ActivationResolver, everyCellOfTheBuiltInCommandsOnPortrait) {
    const auto commands = BuiltInCommands::defaults();
    for (int column = 0; column < 12; ++column) {
        for (int row = 0; row < 24; ++row) {
            std::string expected;
            const bool left = column == 0;
            const bool right = column == 11;
            if (row == 0) {
                expected = left ? "topLeft" : right ? "topRight" : "maximize";
            } else if (row == 23) {
                expected = left ? "bottomLeft" : right ? "bottomRight" : "bottom";
            } else if (left || right) {
                expected = left ? "left" : "right";
            }
            const Point middle{portrait.x + 100 * column + 50, portrait.y + 100 * row + 50};
            EXPECT_EQ(chosen(commands, middle, portrait),
                      expected.empty() ? "" : "command." + expected)
                << column << ", " << row;
        }
    }
}

TEST(ActivationResolver, withoutAreasThereIsNothing) {
    EXPECT_EQ(chosen({}, {10, 500}), "");
    std::vector<SnapCommand> others;
    for (const Kind kind :
         {Kind::center, Kind::restore, Kind::nextDisplay, Kind::previousDisplay}) {
        SnapCommand command = area("other", {{0, 0, 1, 1}}, {{0, 0, 24, 12}});
        command.kind = kind;
        others.push_back(command);
    }
    EXPECT_EQ(chosen(others, {10, 500}), "");
}

TEST(ActivationResolver, minimumEdgesAreInsideAndMaximumEdgesAreNot) {
    const std::vector<SnapCommand> commands{area("block", {{0, 0, 1, 1}}, {{2, 3, 4, 5}})};
    const double minX = landscape.x + 200;
    const double minY = landscape.y + 300;
    EXPECT_EQ(chosen(commands, {minX, minY}), "block");
    EXPECT_EQ(chosen(commands, {minX - 0.01, minY}), "");
    EXPECT_EQ(chosen(commands, {minX, minY - 0.01}), "");
    EXPECT_EQ(chosen(commands, {minX + 399.99, minY + 499.99}), "block");
    EXPECT_EQ(chosen(commands, {minX + 400, minY}), "");
    EXPECT_EQ(chosen(commands, {minX, minY + 500}), "");
}

TEST(ActivationResolver, landscapeCommandsServeNoPortraitScreenNorTheReverse) {
    const std::vector<SnapCommand> wide{area("wide", {{0, 0, 1, 1}}, {{0, 0, 24, 24}})};
    const std::vector<SnapCommand> tall{
        area("tall", {{0, 0, 1, 1}}, {{0, 0, 24, 24}}, Axis::vertical)};
    EXPECT_EQ(chosen(wide, portrait.center(), portrait), "");
    EXPECT_EQ(chosen(wide, landscape.center(), landscape), "wide");
    EXPECT_EQ(chosen(tall, landscape.center(), landscape), "");
    EXPECT_EQ(chosen(tall, portrait.center(), portrait), "tall");
}

TEST(ActivationResolver, theSmallestTargetWins) {
    const std::vector<Segment> everywhere{{0, 0, 24, 12}};
    const SnapCommand large = area("large", {{0, 0, 12, 12}}, everywhere);
    const SnapCommand small = area("small", {{0, 0, 3, 3}, {6, 6, 2, 1}}, everywhere);
    const SnapCommand alsoSmall = area("alsoSmall", {{0, 0, 11, 1}}, everywhere);
    EXPECT_EQ(chosen({large, small}, {500, 500}), "small");
    EXPECT_EQ(chosen({small, large}, {500, 500}), "small");
    EXPECT_EQ(chosen({small, alsoSmall}, {500, 500}), "small") << "the first of equals";
    EXPECT_EQ(chosen({alsoSmall, small}, {500, 500}), "alsoSmall");
}

TEST(ActivationResolver, segmentsWithoutFourIntegersCountForNothing) {
    const std::vector<Segment> everywhere{{0, 0, 24, 12}};
    const SnapCommand one = area("one", {{0, 0, 1, 1}}, everywhere);
    EXPECT_EQ(chosen({one, area("none", {}, everywhere)}, {500, 500}), "none");
    EXPECT_EQ(chosen({one, area("broken", {{0, 0, 5}}, everywhere)}, {500, 500}), "broken");
    EXPECT_EQ(chosen({area("unreachable", {{0, 0, 1, 1}}, {{0, 0, 24}})}, {500, 500}), "");
}

TEST(ActivationResolver, withoutActivationCellsACommandIsNeverChosen) {
    const std::vector<SnapCommand> commands{area("never", {{0, 0, 1, 1}}, {})};
    EXPECT_EQ(chosen(commands, {500, 500}), "");
}

TEST(ActivationResolver, severalBlocksActivateTheSameCommand) {
    const std::vector<SnapCommand> commands{
        area("both", {{0, 0, 1, 1}}, {{0, 0, 1, 1}, {23, 11, 1, 1}})};
    EXPECT_EQ(chosen(commands, {50, 74}), "both");
    EXPECT_EQ(chosen(commands, {2350, 1174}), "both");
    EXPECT_EQ(chosen(commands, {1000, 600}), "");
}

TEST(ActivationResolver, storedNumbersBeyondAllBoundsDoNoHarm) {
    constexpr std::int64_t huge = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t tiny = std::numeric_limits<std::int64_t>::min();
    const std::vector<Segment> everywhere{{0, 0, 24, 12}};
    const SnapCommand vast = area("vast", {{0, 0, huge, huge}, {0, 0, huge, huge}}, everywhere);
    const SnapCommand negative =
        area("negative", {{0, 0, tiny, huge}, {0, 0, tiny, huge}}, everywhere);
    const SnapCommand usual = area("usual", {{0, 0, 12, 12}}, everywhere);
    EXPECT_EQ(chosen({vast, usual}, {500, 500}), "usual");
    EXPECT_EQ(chosen({usual, negative}, {500, 500}), "negative");
}

// The choice is a candidate, and no other candidate is smaller, nor as small and earlier.
RC_GTEST_PROP(ActivationResolverProperty, choosesTheFirstOfTheSmallest, ()) {
    std::vector<SnapCommand> commands;
    const auto cells = [](int most) {
        return static_cast<std::int64_t>(*rc::gen::inRange(0, most));
    };
    const int count = *rc::gen::inRange(0, 12);
    for (int i = 0; i < count; ++i) {
        commands.push_back(area(std::to_string(i), {{0, 0, cells(5), cells(4)}},
                                {{cells(20), cells(10), cells(12), cells(8)}},
                                *rc::gen::inRange(0, 6) == 0 ? Axis::vertical : Axis::horizontal));
    }
    const Point point{*rc::gen::inRange(0, 2400) + 0.5, 24 + *rc::gen::inRange(0, 1200) + 0.5};
    std::string expected;
    std::int64_t least = std::numeric_limits<std::int64_t>::max();
    for (const SnapCommand& command : commands) {
        const Segment& active = command.activationSegments.front();
        const auto inside = [](double value, std::int64_t first, std::int64_t cellCount) {
            return value >= 100.0 * static_cast<double>(first) &&
                   value < 100.0 * static_cast<double>(first + cellCount);
        };
        const std::int64_t size = command.targetSegments[0][2] * command.targetSegments[0][3];
        if (command.axis == Axis::horizontal && inside(point.x, active[0], active[2]) &&
            inside(point.y - 24, active[1], active[3]) && size < least) {
            least = size;
            expected = command.nameKey;
        }
    }
    RC_ASSERT(chosen(commands, point) == expected);
}

}  // namespace
}  // namespace lumatile
