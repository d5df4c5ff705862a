#include "geometry/Area.h"

#include <functional>
#include <unordered_set>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "geometry/GridSize.h"
#include "geometry/Orientation.h"
#include "tests/support/Arbitrary.h"

namespace lumatile {
namespace {

TEST(Orientation, rawValuesAreThoseOfTheStoredForms) {
    EXPECT_EQ(sizeof(Orientation), 1U);
    EXPECT_EQ(static_cast<int>(Orientation::horizontal), 0);
    EXPECT_EQ(static_cast<int>(Orientation::vertical), 1);
}

TEST(Orientation, aScreenIsPortraitOnlyWhenStrictlyNarrowerThanHigh) {
    EXPECT_EQ(orientationOf({0, 0, 1920, 1080}), Orientation::horizontal);
    EXPECT_EQ(orientationOf({0, 0, 1000, 1000}), Orientation::horizontal);
    EXPECT_EQ(orientationOf({0, 0, 999.5, 1000}), Orientation::vertical);
}

TEST(GridSize, portraitIsTheTransposeOfLandscape) {
    EXPECT_EQ(GridSize::of(Orientation::horizontal), (GridSize{24, 12}));
    EXPECT_EQ(GridSize::of(Orientation::vertical), (GridSize{12, 24}));
}

TEST(Area, madeOfOneCellRectHoldsExactlyThat) {
    const Area area(CellRect{1, 2, 3, 4});
    ASSERT_EQ(area.segments.size(), 1U);
    EXPECT_EQ(area.segments.front(), (CellRect{1, 2, 3, 4}));
    EXPECT_EQ(area.firstSegment(), (CellRect{1, 2, 3, 4}));
}

TEST(Area, firstSegmentOfSeveralIsTheFirstInTheList) {
    const Area area({CellRect{9, 9, 1, 1}, CellRect{0, 0, 2, 2}});
    EXPECT_EQ(area.firstSegment(), (CellRect{9, 9, 1, 1}));
}

TEST(Area, withoutSegmentsHasTheZeroBlockAsFirst) {
    EXPECT_EQ(Area().firstSegment(), (CellRect{0, 0, 0, 0}));
}

TEST(Area, equalityNeedsSameBlocksInTheSameOrder) {
    const CellRect a{0, 0, 6, 6};
    const CellRect b{18, 6, 6, 6};
    EXPECT_EQ(Area({a, b}), Area({a, b}));
    EXPECT_NE(Area({a, b}), Area({b, a}));
    EXPECT_NE(Area({a, b}), Area({a}));
    EXPECT_NE(Area({a}), Area({a, a}));
    EXPECT_NE(Area({a}), Area());
}

TEST(Area, equalityLooksAtEveryField) {
    const CellRect base{1, 2, 3, 4};
    for (const CellRect& other :
         {CellRect{0, 2, 3, 4}, CellRect{1, 0, 3, 4}, CellRect{1, 2, 0, 4}, CellRect{1, 2, 3, 0}}) {
        EXPECT_NE(Area(base), Area(other));
    }
}

TEST(Area, hashTellsOrdersAndFieldsApart) {
    const std::hash<Area> hash;
    const CellRect a{0, 0, 6, 6};
    const CellRect b{18, 6, 6, 6};
    EXPECT_EQ(hash(Area({a, b})), hash(Area({a, b})));
    EXPECT_NE(hash(Area({a, b})), hash(Area({b, a})));
    const CellRect base{1, 2, 3, 4};
    for (const CellRect& other : {CellRect{0, 2, 3, 4}, CellRect{1, 0, 3, 4}, CellRect{1, 2, 0, 4},
                                  CellRect{1, 2, 3, 0}, CellRect{2, 1, 3, 4}}) {
        EXPECT_NE(hash(Area(base)), hash(Area(other)));
    }
}

TEST(Area, setsKeepTheSameBlocksInAnotherOrderApart) {
    const CellRect a{0, 0, 6, 6};
    const CellRect b{18, 6, 6, 6};
    const std::unordered_set<Area> areas{Area({a, b}), Area({b, a}), Area({a, b})};
    EXPECT_EQ(areas.size(), 2U);
    EXPECT_TRUE(areas.contains(Area({b, a})));
    EXPECT_FALSE(areas.contains(Area({a})));
}

RC_GTEST_PROP(Area, equalAreasHaveEqualHashes, ()) {
    const Area area = *arbitrary::area();
    const Area copy(area.segments);
    RC_ASSERT(copy == area);
    RC_ASSERT(std::hash<Area>{}(copy) == std::hash<Area>{}(area));
}

}  // namespace
}  // namespace lumatile
