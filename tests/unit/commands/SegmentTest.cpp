#include "commands/Segment.h"

#include <gtest/gtest.h>

namespace lumatile {
namespace {

TEST(Segment, fourIntegersAreABlockOfCells) {
    EXPECT_EQ(cellRect({1, 2, 3, 4}), (CellRect{1, 2, 3, 4}));
    EXPECT_EQ(cellRect({-1, 0, INT64_MAX, INT64_MIN}), (CellRect{-1, 0, INT64_MAX, INT64_MIN}));
}

TEST(Segment, anyOtherNumberOfIntegersIsNone) {
    EXPECT_EQ(cellRect({}), std::nullopt);
    EXPECT_EQ(cellRect({1, 2, 3}), std::nullopt);
    EXPECT_EQ(cellRect({1, 2, 3, 4, 5}), std::nullopt);
}

TEST(Segment, anAreaLeavesOutWhatIsNoBlockAndKeepsTheOrder) {
    EXPECT_EQ(areaOf({{18, 6, 6, 6}, {1, 2, 3}, {0, 0, 6, 6}, {}}),
              Area({CellRect{18, 6, 6, 6}, CellRect{0, 0, 6, 6}}));
    EXPECT_EQ(areaOf({}), Area());
    EXPECT_EQ(areaOf({{1, 2, 3}}), Area());
}

}  // namespace
}  // namespace lumatile
