#include "settings_core/GridEditing.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "commands/BuiltInCommands.h"
#include "geometry/GridSize.h"

namespace lumatile {
namespace {

TEST(GridEditing, aCellOutsideComesToTheNearestEdge) {
    EXPECT_EQ(GridEditing::clamp({-3, 5}, Orientation::horizontal), (GridCell{0, 5}));
    EXPECT_EQ(GridEditing::clamp({24, 12}, Orientation::horizontal), (GridCell{23, 11}));
    EXPECT_EQ(GridEditing::clamp({24, 12}, Orientation::vertical), (GridCell{11, 12}));
    EXPECT_EQ(GridEditing::clamp({7, -1}, Orientation::vertical), (GridCell{7, 0}));
}

TEST(GridEditing, aDragWithinOneCellGivesThatCell) {
    EXPECT_EQ(GridEditing::rect({4, 2}, {4, 2}), (CellRect{4, 2, 1, 1}));
}

RC_GTEST_PROP(GridEditing, bothCellsAreInTheBlockWhicheverComesFirst, ()) {
    const auto cell = [] {
        return GridCell{*rc::gen::inRange<std::int64_t>(-30, 60),
                        *rc::gen::inRange<std::int64_t>(-30, 60)};
    };
    const GridCell from = cell();
    const GridCell to = cell();
    const CellRect block = GridEditing::rect(from, to);
    RC_ASSERT(block == GridEditing::rect(to, from));
    RC_ASSERT(block.ox == std::min(from.col, to.col));
    RC_ASSERT(block.oy == std::min(from.row, to.row));
    RC_ASSERT(block.ox + block.w - 1 == std::max(from.col, to.col));
    RC_ASSERT(block.oy + block.h - 1 == std::max(from.row, to.row));
}

RC_GTEST_PROP(GridEditing, clampedCellsAreInsideAndInsideCellsStay, ()) {
    const Orientation orientation =
        *rc::gen::element(Orientation::horizontal, Orientation::vertical);
    const GridSize grid = GridSize::of(orientation);
    const GridCell cell{*rc::gen::arbitrary<std::int64_t>(), *rc::gen::arbitrary<std::int64_t>()};
    const GridCell inside = GridEditing::clamp(cell, orientation);
    RC_ASSERT(inside.col >= 0 && inside.col < grid.cols);
    RC_ASSERT(inside.row >= 0 && inside.row < grid.rows);
    RC_ASSERT(GridEditing::clamp(inside, orientation) == inside);
}

TEST(GridEditing, aBlockLiesInItsDrawingArea) {
    EXPECT_EQ(
        GridEditing::rect(CellRect{12, 6, 12, 6}, Rect{10, 20, 480, 240}, Orientation::horizontal),
        (Rect{250, 140, 240, 120}));
}

TEST(GridEditing, drawingReplacesEverySegment) {
    SnapCommand command = SnapCommand::custom("mine", 1, 2, 3, 4);
    command.targetSegments.push_back({0, 0, 1, 1});
    command.activationSegments = {{0, 0, 1, 1}, {5, 5, 1, 1}};
    GridEditing::setTarget(command, {6, 3, 12, 6});
    EXPECT_EQ(command.targetSegments, (std::vector<Segment>{{6, 3, 12, 6}}));
    EXPECT_EQ(command.activationSegments.size(), 2U);
    GridEditing::setActivation(command, {0, 11, 2, 1});
    EXPECT_EQ(command.activationSegments, (std::vector<Segment>{{0, 11, 2, 1}}));
    EXPECT_EQ(command.targetSegments, (std::vector<Segment>{{6, 3, 12, 6}}));
}

TEST(GridEditing, theDefaultOfAnEditedCommandIsItsOwnRow) {
    for (const SnapCommand& builtIn : BuiltInCommands::defaults()) {
        SnapCommand edited = builtIn;
        edited.targetSegments = {{0, 0, 1, 1}};
        edited.shortcut.reset();
        EXPECT_EQ(GridEditing::defaultOf(edited), builtIn);
    }
}

TEST(GridEditing, anAreaOfTheUserHasNoDefault) {
    EXPECT_EQ(GridEditing::defaultOf(SnapCommand::custom("mine", 0, 0, 1, 1)), std::nullopt);
}

}  // namespace
}  // namespace lumatile
