#include "settings_core/GridEditorLayout.h"

#include <gtest/gtest.h>

#include <string>

namespace lumatile {
namespace {

constexpr GridCellFill empty = GridCellFill::empty;
constexpr GridCellFill titleBar = GridCellFill::titleBar;
constexpr GridCellFill frame = GridCellFill::frame;
constexpr GridCellFill interior = GridCellFill::interior;

GridEditorLayout example() { return GridEditorLayout::of({480, 300}, Orientation::horizontal); }

TEST(GridEditorLayout, aLandscapeGridOf480By300) {
    const GridEditorLayout layout = example();
    EXPECT_EQ(layout.grid, (GridSize{24, 12}));
    EXPECT_EQ(layout.pitch, 20);
    EXPECT_EQ(layout.origin, (Point{0, 30}));
    EXPECT_EQ(layout.gap(), 3);
    EXPECT_EQ(layout.cell({0, 0}), (Rect{1.5, 31.5, 17, 17}));
    EXPECT_EQ(layout.cell({23, 11}), (Rect{461.5, 251.5, 17, 17}));
    EXPECT_NEAR(layout.cornerRadius(), 3.4, 1e-12);
}

TEST(GridEditorLayout, aPortraitGridIsCentredOnWholePoints) {
    const GridEditorLayout layout = GridEditorLayout::of({301, 300}, Orientation::vertical);
    EXPECT_EQ(layout.grid, (GridSize{12, 24}));
    EXPECT_EQ(layout.pitch, 12);
    EXPECT_EQ(layout.origin, (Point{78, 6}));
    EXPECT_EQ(layout.gap(), 2);
}

TEST(GridEditorLayout, withoutRoomNothingIsVisibleAndNothingIsHit) {
    const GridEditorLayout layout = GridEditorLayout::of({20, 300}, Orientation::horizontal);
    EXPECT_EQ(layout.pitch, 0);
    EXPECT_LT(layout.cell({3, 3}).width, 0);
    EXPECT_LT(layout.cell({3, 3}).height, 0);
    EXPECT_EQ(layout.cellAt({5, 5}), std::nullopt);
}

TEST(GridEditorLayout, aPointLiesInItsCell) {
    EXPECT_EQ(example().cellAt({0, 30}), (GridCell{0, 0}));
    EXPECT_EQ(example().cellAt({19.9, 49.9}), (GridCell{0, 0}));
    EXPECT_EQ(example().cellAt({20, 50}), (GridCell{1, 1}));
}

TEST(GridEditorLayout, aPointOutsideIsNotClamped) {
    EXPECT_EQ(example().cellAt({-1, 29}), (GridCell{-1, -1}));
    EXPECT_EQ(example().cellAt({480, 270}), (GridCell{24, 12}));
}

TEST(GridEditorLayout, anAreaReadsAsASmallWindow) {
    const CellRect area{2, 1, 4, 3};
    const std::string expected =
        "........"
        "..TTTT.."
        "..F--F.."
        "..FFFF.."
        "........";
    std::string seen;
    for (std::int64_t row = 0; row < 5; ++row) {
        for (std::int64_t col = 0; col < 8; ++col) {
            switch (GridEditorLayout::fill({col, row}, area)) {
                case empty:
                    seen += '.';
                    break;
                case titleBar:
                    seen += 'T';
                    break;
                case frame:
                    seen += 'F';
                    break;
                case interior:
                    seen += '-';
                    break;
            }
        }
    }
    EXPECT_EQ(seen, expected);
}

TEST(GridEditorLayout, anAreaOfOneCellIsAllTitleBar) {
    const CellRect area{5, 5, 1, 1};
    EXPECT_EQ(GridEditorLayout::fill({5, 5}, area), titleBar);
    EXPECT_EQ(GridEditorLayout::fill({6, 5}, area), empty);
    EXPECT_EQ(GridEditorLayout::fill({5, 6}, area), empty);
}

TEST(GridEditorLayout, withoutAnAreaAllCellsAreEmpty) {
    EXPECT_EQ(GridEditorLayout::fill({0, 0}, std::nullopt), empty);
}

TEST(GridEditorLayout, theFirstAreaCountsIfItIsWhole) {
    SnapCommand command = SnapCommand::custom("mine", 1, 2, 3, 4);
    command.targetSegments.push_back({9, 9, 1, 1});
    EXPECT_EQ(GridEditorLayout::shownArea(command), (CellRect{1, 2, 3, 4}));
    command.targetSegments = {{1, 2, 3}, {0, 0, 1, 1}};
    EXPECT_EQ(GridEditorLayout::shownArea(command), std::nullopt);
    command.targetSegments.clear();
    EXPECT_EQ(GridEditorLayout::shownArea(command), std::nullopt);
}

TEST(GridEditorLayout, theLabelSaysWhereTheAreaIs) {
    EXPECT_EQ(GridEditorLayout::label(SnapCommand::custom("mine", 0, 0, 12, 12)),
              "Snap area grid, 24 by 12 cells. Area: 12 by 12 cells, starting at column 1, row 1. "
              "Drag to change it.");
    SnapCommand portrait = SnapCommand::custom("mine", 3, 5, 1, 2);
    portrait.axis = Axis::vertical;
    EXPECT_EQ(GridEditorLayout::label(portrait),
              "Snap area grid, 12 by 24 cells. Area: 1 by 2 cells, starting at column 4, row 6. "
              "Drag to change it.");
}

TEST(GridEditorLayout, theLabelWithoutAnArea) {
    SnapCommand command = SnapCommand::custom("mine", 0, 0, 1, 1);
    command.targetSegments.clear();
    EXPECT_EQ(GridEditorLayout::label(command), "Snap area grid, no area set");
}

}  // namespace
}  // namespace lumatile
