#include "geometry/Grid.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "geometry/GridSize.h"
#include "tests/support/Arbitrary.h"

namespace lumatile {
namespace {

constexpr Orientation horizontal = Orientation::horizontal;
constexpr Orientation vertical = Orientation::vertical;

bool areSameBits(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool areSameBits(const Rect& a, const Rect& b) {
    return areSameBits(a.x, b.x) && areSameBits(a.y, b.y) && areSameBits(a.width, b.width) &&
           areSameBits(a.height, b.height);
}

void expectNear(const Rect& actual, const Rect& expected, double tolerance) {
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.width, expected.width, tolerance);
    EXPECT_NEAR(actual.height, expected.height, tolerance);
}

TEST(Grid, cellsOfALandscapeFrame) {
    const Rect frame{0, 25, 1920, 1080};
    EXPECT_EQ(Grid::cellSize(frame, horizontal), (Size{80, 90}));
    EXPECT_EQ(Grid::rect(CellRect{12, 0, 12, 12}, frame, horizontal), (Rect{960, 25, 960, 1080}));
    EXPECT_EQ(Grid::rect(CellRect{0, 0, 8, 12}, frame, horizontal), (Rect{0, 25, 640, 1080}));
}

TEST(Grid, cellsOfAPortraitFrame) {
    const Rect frame{0, 0, 1080, 1920};
    EXPECT_EQ(Grid::cellSize(frame, vertical), (Size{90, 80}));
    EXPECT_EQ(Grid::rect(CellRect{0, 8, 12, 8}, frame, vertical), (Rect{0, 640, 1080, 640}));
}

TEST(Grid, roundsNothing) {
    const Rect third = Grid::rect(CellRect{0, 0, 8, 12}, {0, 0, 1366, 768}, horizontal);
    EXPECT_EQ(third.width, 1366.0 / 24 * 8);
    EXPECT_NEAR(third.width, 455.3333333333333, 1e-12);
    EXPECT_EQ(Grid::cellSize({0, 0, 1366, 768}, horizontal).width, 1366.0 / 24);
}

TEST(Grid, clampsNothing) {
    const Rect frame{0, 0, 2400, 1200};
    EXPECT_EQ(Grid::rect(CellRect{20, 10, 10, 10}, frame, horizontal),
              (Rect{2000, 1000, 1000, 1000}));
    EXPECT_EQ(Grid::rect(CellRect{-1, -2, 3, 4}, frame, horizontal), (Rect{-100, -200, 300, 400}));
    EXPECT_EQ(Grid::rect(CellRect{0, 0, 0, 0}, frame, horizontal), (Rect{0, 0, 0, 0}));
}

TEST(Grid, theLargestCellNumbersGiveFiniteRectangles) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    const Rect rect =
        Grid::rect(CellRect{most, least, most, least}, {0, 0, 2400, 1200}, horizontal);
    EXPECT_EQ(rect.x, 0x1p63 * 100);
    EXPECT_EQ(rect.y, -0x1p63 * 100);
    EXPECT_TRUE(std::isfinite(rect.maxX()));
}

TEST(Grid, anAreaOfOneBlockIsThatBlock) {
    const Rect frame{7.3, -11.7, 1366, 741};
    const CellRect cell{5, 3, 7, 2};
    EXPECT_TRUE(areSameBits(Grid::rect(Area(cell), frame, horizontal),
                            Grid::rect(cell, frame, horizontal)));
}

TEST(Grid, anAreaOfTwoOppositeCornersEnclosesTheFrameButNotItsMiddle) {
    const Area area({CellRect{0, 0, 6, 6}, CellRect{18, 6, 6, 6}});
    const Rect frame{0, 25, 1920, 1080};
    EXPECT_EQ(Grid::rect(area, frame, horizontal), frame);
    EXPECT_FALSE(Grid::contains(frame.center(), area, frame, horizontal));
    EXPECT_TRUE(Grid::contains({10, 30}, area, frame, horizontal));
    EXPECT_TRUE(Grid::contains({1900, 1000}, area, frame, horizontal));
    EXPECT_FALSE(Grid::contains({1900, 30}, area, frame, horizontal));
}

TEST(Grid, anAreaOfThreeBlocksEnclosesThemAll) {
    const Rect frame{0, 0, 2400, 1200};
    const Area area({CellRect{4, 4, 1, 1}, CellRect{2, 6, 1, 1}, CellRect{9, 1, 2, 1}});
    EXPECT_EQ(Grid::rect(area, frame, horizontal), (Rect{200, 100, 900, 600}));
}

TEST(Grid, theOrderOfBlocksDoesNotChangeTheEnclosingRectangle) {
    const Rect frame{0, 0, 2400, 1200};
    const CellRect a{4, 4, 1, 1};
    const CellRect b{2, 6, 3, 1};
    EXPECT_EQ(Grid::rect(Area({a, b}), frame, horizontal),
              Grid::rect(Area({b, a}), frame, horizontal));
}

TEST(Grid, anEmptyAreaIsTheZeroRectangleAndContainsNothing) {
    const Rect frame{100, 100, 1920, 1080};
    EXPECT_EQ(Grid::rect(Area(), frame, horizontal), (Rect{0, 0, 0, 0}));
    EXPECT_FALSE(Grid::contains({0, 0}, Area(), frame, horizontal));
    EXPECT_FALSE(Grid::contains(frame.center(), Area(), frame, horizontal));
}

TEST(Grid, containmentIsHalfOpen) {
    const Rect frame{0, 0, 2400, 1200};
    const Area area(CellRect{1, 1, 2, 2});
    EXPECT_TRUE(Grid::contains({100, 100}, area, frame, horizontal));
    EXPECT_FALSE(Grid::contains({300, 200}, area, frame, horizontal));
    EXPECT_FALSE(Grid::contains({200, 300}, area, frame, horizontal));
    EXPECT_FALSE(Grid::contains({99.9, 200}, area, frame, horizontal));
}

TEST(Grid, containmentUsesTheGridOfTheOrientation) {
    const Rect frame{0, 0, 1080, 1920};
    const Area lowerHalf(CellRect{0, 12, 12, 12});
    EXPECT_TRUE(Grid::contains({500, 1900}, lowerHalf, frame, vertical));
    EXPECT_FALSE(Grid::contains({500, 900}, lowerHalf, frame, vertical));
    EXPECT_FALSE(Grid::contains({500, 1900}, lowerHalf, frame, horizontal));
}

TEST(Grid, centredRectangleHasTheFramesCentre) {
    EXPECT_EQ(Grid::centered({800, 600}, {0, 25, 1920, 1080}), (Rect{560, 265, 800, 600}));
}

TEST(Grid, centredRectangleLargerThanTheFrameOverhangsEquallyOnBothSides) {
    const Rect frame{100, 100, 1000, 500};
    EXPECT_EQ(Grid::centered({1200, 700}, frame), (Rect{0, 0, 1200, 700}));
    const Rect centered = Grid::centered({3000, 2000}, frame);
    EXPECT_LT(centered.x - frame.x, 0);
    EXPECT_LT(centered.y - frame.y, 0);
    EXPECT_EQ(centered.size(), (Size{3000, 2000}));
}

TEST(Grid, transferKeepsRelativePlaceAndSize) {
    const Rect small{0, 0, 1000, 500};
    const Rect large{1000, -200, 3000, 2000};
    EXPECT_EQ(Grid::transferred({500, 0, 500, 500}, small, large), (Rect{2500, -200, 1500, 2000}));
    EXPECT_EQ(Grid::transferred({250, 125, 100, 50}, small, large), (Rect{1750, 300, 300, 200}));
}

TEST(Grid, transferOntoTheSameFrameChangesNothing) {
    const Rect frame{13, 25, 1366, 743};
    const Rect rect{333.25, 101, 455.5, 299};
    expectNear(Grid::transferred(rect, frame, frame), rect, 1e-9);
}

TEST(Grid, transferOfARectangleOutsideItsSourceStaysOutside) {
    EXPECT_EQ(Grid::transferred({-100, 600, 50, 50}, {0, 0, 1000, 500}, {0, 0, 2000, 1000}),
              (Rect{-200, 1200, 100, 100}));
}

TEST(Grid, framesOfNegativeSizeCountAsTheirMirrorImages) {
    const Rect frame{0, 0, 2400, 1200};
    const Rect mirrored{2400, 1200, -2400, -1200};
    const Rect rect{100, 200, 300, 400};
    const Rect mirroredRect{400, 600, -300, -400};
    const Rect target{50, 60, 1200, 600};
    const Area area({CellRect{1, 2, 3, 4}, CellRect{6, 7, 1, 1}});
    EXPECT_EQ(Grid::cellSize(mirrored, horizontal), (Size{100, 100}));
    EXPECT_EQ(Grid::rect(area, mirrored, horizontal), Grid::rect(area, frame, horizontal));
    EXPECT_TRUE(Grid::contains({150, 250}, area, mirrored, horizontal));
    EXPECT_EQ(Grid::centered({100, 100}, mirrored), Grid::centered({100, 100}, frame));
    EXPECT_EQ(Grid::transferred(mirroredRect, mirrored, target),
              Grid::transferred(rect, frame, target));
    EXPECT_EQ(Grid::transferred(rect, frame, mirrored), rect);
}

// The results are compared with the operations written out in their fixed order, on numbers that
// make another order (or a fused multiply-add) visible in the last bits.
RC_GTEST_PROP(Grid, cellRectanglesAgreeBitForBitWithTheOrderedOperations, ()) {
    const Rect frame = *arbitrary::rect();
    const CellRect cell = *arbitrary::cellRect();
    const Orientation orientation = *arbitrary::orientation();
    const double cols = orientation == horizontal ? 24 : 12;
    const double rows = orientation == horizontal ? 12 : 24;

    const double cellWidth = frame.width / cols;
    const double cellHeight = frame.height / rows;
    const double left = cellWidth * static_cast<double>(cell.ox);
    const double top = cellHeight * static_cast<double>(cell.oy);
    const Rect expected{frame.x + left, frame.y + top, cellWidth * static_cast<double>(cell.w),
                        cellHeight * static_cast<double>(cell.h)};

    RC_ASSERT(areSameBits(Grid::rect(cell, frame, orientation), expected));
}

RC_GTEST_PROP(Grid, centredRectanglesAgreeBitForBitWithTheOrderedOperations, ()) {
    const Rect frame = *arbitrary::rect();
    const Size size{*arbitrary::number(1, 9000), *arbitrary::number(1, 9000)};
    const double midX = frame.x + frame.width * 0.5;
    const double midY = frame.y + frame.height * 0.5;
    RC_ASSERT(areSameBits(
        Grid::centered(size, frame),
        Rect{midX - size.width * 0.5, midY - size.height * 0.5, size.width, size.height}));
}

RC_GTEST_PROP(Grid, transfersAgreeBitForBitWithTheOrderedOperations, ()) {
    const Rect rect = *arbitrary::rect();
    const Rect source = *arbitrary::rect();
    const Rect target = *arbitrary::rect();
    const double rx = (rect.x - source.x) / source.width;
    const double ry = (rect.y - source.y) / source.height;
    const double rw = rect.width / source.width;
    const double rh = rect.height / source.height;
    const double left = rx * target.width;
    const double top = ry * target.height;
    RC_ASSERT(
        areSameBits(Grid::transferred(rect, source, target),
                    Rect{target.x + left, target.y + top, rw * target.width, rh * target.height}));
}

RC_GTEST_PROP(Grid, transferThereAndBackReturnsTheRectangle, ()) {
    const Rect rect = *arbitrary::rect();
    const Rect source{*arbitrary::number(-4000, 4000), *arbitrary::number(-4000, 4000),
                      *arbitrary::number(200, 8000), *arbitrary::number(200, 8000)};
    const Rect target{*arbitrary::number(-4000, 4000), *arbitrary::number(-4000, 4000),
                      *arbitrary::number(200, 8000), *arbitrary::number(200, 8000)};
    const Rect back = Grid::transferred(Grid::transferred(rect, source, target), target, source);
    RC_ASSERT(back.isWithin(1e-6, rect));
}

RC_GTEST_PROP(Grid, theRectangleOfAnAreaEnclosesEveryBlock, ()) {
    const Area area = *arbitrary::area();
    const Rect frame = *arbitrary::rect();
    const Orientation orientation = *arbitrary::orientation();
    const Rect whole = Grid::rect(area, frame, orientation);
    for (const CellRect& cell : area.segments) {
        RC_ASSERT(whole.grownBy(1e-9).contains(Grid::rect(cell, frame, orientation)));
    }
}

RC_GTEST_PROP(Grid, anAreaContainsThePointsOfItsBlocksAndNoOthers, ()) {
    const Area area = *arbitrary::area();
    const Rect frame{0, 0, 2400, 2400};
    const Orientation orientation = *arbitrary::orientation();
    const GridSize grid = GridSize::of(orientation);
    const std::int64_t column = *rc::gen::inRange<std::int64_t>(0, grid.cols);
    const std::int64_t row = *rc::gen::inRange<std::int64_t>(0, grid.rows);
    const Point middle = Grid::rect(CellRect{column, row, 1, 1}, frame, orientation).center();

    bool isCovered = false;
    for (const CellRect& cell : area.segments) {
        isCovered = isCovered || (column >= cell.ox && column < cell.ox + cell.w &&
                                  row >= cell.oy && row < cell.oy + cell.h);
    }
    RC_ASSERT(Grid::contains(middle, area, frame, orientation) == isCovered);
    if (isCovered) {
        RC_ASSERT(Grid::rect(area, frame, orientation).contains(middle));
    }
}

RC_GTEST_PROP(Grid, halvesOfAnyFrameMeetAndFillIt, ()) {
    const Rect frame = *arbitrary::rect();
    const Rect left = Grid::rect(CellRect{0, 0, 12, 12}, frame, horizontal);
    const Rect right = Grid::rect(CellRect{12, 0, 12, 12}, frame, horizontal);
    RC_ASSERT(std::abs(left.maxX() - right.minX()) < 1e-9);
    RC_ASSERT(left.enclosing(right).isWithin(1e-9, frame));
}

}  // namespace
}  // namespace lumatile
