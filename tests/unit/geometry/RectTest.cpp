#include "geometry/Rect.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/support/Arbitrary.h"

namespace lumatile {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(Rect, edgesOfAnOrdinaryRectangle) {
    const Rect rect{10, 20, 30, 40};
    EXPECT_EQ(rect.minX(), 10);
    EXPECT_EQ(rect.minY(), 20);
    EXPECT_EQ(rect.maxX(), 40);
    EXPECT_EQ(rect.maxY(), 60);
    EXPECT_EQ(rect.midX(), 25);
    EXPECT_EQ(rect.midY(), 40);
    EXPECT_EQ(rect.center(), (Point{25, 40}));
    EXPECT_EQ(rect.origin(), (Point{10, 20}));
    EXPECT_EQ(rect.size(), (Size{30, 40}));
}

TEST(Rect, negativeSizesSpanTheMirroredRectangle) {
    const Rect rect{40, 60, -30, -40};
    EXPECT_EQ(rect.minX(), 10);
    EXPECT_EQ(rect.minY(), 20);
    EXPECT_EQ(rect.maxX(), 40);
    EXPECT_EQ(rect.maxY(), 60);
    EXPECT_EQ(rect.center(), (Point{25, 40}));
    EXPECT_TRUE(rect.contains(Point{10, 20}));
    EXPECT_FALSE(rect.contains(Point{40, 60}));
}

TEST(Rect, containsItsMinEdgesAndNotItsMaxEdges) {
    const Rect rect{10, 20, 30, 40};
    struct Case {
        Point point;
        bool inside = false;
    };
    const double justInside = std::nextafter(40.0, 0.0);
    const double justOutside = std::nextafter(10.0, 0.0);
    for (const Case& c : {Case{{10, 20}, true}, Case{{39, 59}, true}, Case{{40, 30}, false},
                          Case{{20, 60}, false}, Case{{40, 60}, false}, Case{{9, 30}, false},
                          Case{{20, 19}, false}, Case{{justInside, 30}, true},
                          Case{{justOutside, 30}, false}, Case{{notANumber, 30}, false}}) {
        EXPECT_EQ(rect.contains(c.point), c.inside) << c.point.x << ", " << c.point.y;
    }
}

TEST(Rect, withoutExtentContainsNoPoint) {
    EXPECT_FALSE(Rect{}.contains(Point{0, 0}));
    EXPECT_FALSE((Rect{5, 5, 0, 10}).contains(Point{5, 6}));
}

TEST(Rect, containsRectanglesUpToSharedEdges) {
    const Rect outer{0, 0, 100, 100};
    EXPECT_TRUE(outer.contains(outer));
    EXPECT_TRUE(outer.contains(Rect{10, 10, 90, 90}));
    EXPECT_TRUE(outer.contains(Rect{100, 100, -100, -100}));
    EXPECT_FALSE(outer.contains(Rect{-0.25, 0, 50, 50}));
    EXPECT_FALSE(outer.contains(Rect{0, -0.25, 50, 50}));
    EXPECT_FALSE(outer.contains(Rect{50, 0, 50.25, 50}));
    EXPECT_FALSE(outer.contains(Rect{0, 50, 50, 50.25}));
}

TEST(Rect, enclosingSpansBothAndTheGap) {
    EXPECT_EQ((Rect{0, 0, 10, 10}.enclosing({30, 20, 10, 10})), (Rect{0, 0, 40, 30}));
    EXPECT_EQ((Rect{30, 20, 10, 10}.enclosing({0, 0, 10, 10})), (Rect{0, 0, 40, 30}));
    EXPECT_EQ((Rect{0, 0, 10, 10}.enclosing({2, 2, 3, 3})), (Rect{0, 0, 10, 10}));
    EXPECT_EQ((Rect{10, 10, -10, -10}.enclosing({10, 10, 5, 5})), (Rect{0, 0, 15, 15}));
}

TEST(Rect, intersectionIsTheCommonPart) {
    EXPECT_EQ((Rect{0, 0, 10, 10}.intersection({5, 6, 10, 10})), (Rect{5, 6, 5, 4}));
    EXPECT_EQ((Rect{0, 0, 10, 10}.intersection({2, 2, 3, 3})), (Rect{2, 2, 3, 3}));
}

TEST(Rect, intersectionOfSeparateRectanglesHasNoExtent) {
    EXPECT_EQ((Rect{0, 0, 10, 10}.intersection({10, 0, 10, 10})).width, 0);
    EXPECT_EQ((Rect{0, 0, 10, 10}.intersection({50, 0, 10, 10})).width, 0);
    EXPECT_EQ((Rect{0, 0, 10, 10}.intersection({0, 50, 10, 10})).height, 0);
}

TEST(Rect, growsOnEverySide) {
    EXPECT_EQ((Rect{10, 10, 20, 20}.grownBy(0.5)), (Rect{9.5, 9.5, 21, 21}));
    EXPECT_EQ((Rect{10, 10, 20, 20}.grownBy(-5)), (Rect{15, 15, 10, 10}));
    EXPECT_EQ((Rect{30, 30, -20, -20}.grownBy(1)), (Rect{9, 9, 22, 22}));
}

TEST(Rect, movesWithoutChangingItsSize) {
    EXPECT_EQ((Rect{10, 10, 20, 30}.offsetBy(1, -2)), (Rect{11, 8, 20, 30}));
}

TEST(Rect, isWithinComparesEachOfFourNumbersInclusively) {
    const Rect base{100, 100, 50, 50};
    struct Case {
        Rect other;
        bool within = false;
    };
    for (const Case& c : {Case{base, true}, Case{{101.5, 98.5, 51.5, 48.5}, true},
                          Case{{101.625, 100, 50, 50}, false}, Case{{100, 98.375, 50, 50}, false},
                          Case{{100, 100, 51.625, 50}, false}, Case{{100, 100, 50, 48.375}, false},
                          Case{{notANumber, 100, 50, 50}, false}}) {
        EXPECT_EQ(base.isWithin(1.5, c.other), c.within) << c.other.x << ", " << c.other.y;
        EXPECT_EQ(c.other.isWithin(1.5, base), c.within);
    }
}

RC_GTEST_PROP(Rect, enclosingContainsBothAndTouchesThemOnEverySide, ()) {
    const Rect a = *arbitrary::rect();
    const Rect b = *arbitrary::rect();
    const Rect both = a.enclosing(b);
    // A far edge is a sum, so it carries the rounding of one addition.
    RC_ASSERT(both.grownBy(1e-9).contains(a));
    RC_ASSERT(both.grownBy(1e-9).contains(b));
    RC_ASSERT(both.minX() == std::min(a.minX(), b.minX()));
    RC_ASSERT(both.minY() == std::min(a.minY(), b.minY()));
    RC_ASSERT(std::abs(both.maxX() - std::max(a.maxX(), b.maxX())) < 1e-9);
    RC_ASSERT(std::abs(both.maxY() - std::max(a.maxY(), b.maxY())) < 1e-9);
}

RC_GTEST_PROP(Rect, aPointOfTheIntersectionLiesInBothAndInNoOther, ()) {
    const Rect a{0, 0, *arbitrary::number(1, 50), *arbitrary::number(1, 50)};
    const Rect b{*arbitrary::number(-40, 40), *arbitrary::number(-40, 40), 40, 40};
    const Point point{*arbitrary::number(-10, 60), *arbitrary::number(-10, 60)};
    // Away from the edges, whose last bit the subtraction in a width may change.
    const auto isNearAnEdge = [&point](const Rect& rect) {
        return std::abs(point.x - rect.minX()) < 1e-9 || std::abs(point.x - rect.maxX()) < 1e-9 ||
               std::abs(point.y - rect.minY()) < 1e-9 || std::abs(point.y - rect.maxY()) < 1e-9;
    };
    RC_PRE(!isNearAnEdge(a) && !isNearAnEdge(b));
    RC_ASSERT(a.intersection(b).contains(point) == (a.contains(point) && b.contains(point)));
}

RC_GTEST_PROP(Rect, mirrorImagesSpanTheSameRectangle, ()) {
    const Rect whole{static_cast<double>(*rc::gen::inRange(-5000, 5000)),
                     static_cast<double>(*rc::gen::inRange(-5000, 5000)),
                     static_cast<double>(*rc::gen::inRange(1, 5000)),
                     static_cast<double>(*rc::gen::inRange(1, 5000))};
    const Rect mirrored{whole.maxX(), whole.maxY(), -whole.width, -whole.height};
    RC_ASSERT(mirrored.minX() == whole.minX());
    RC_ASSERT(mirrored.maxY() == whole.maxY());
    RC_ASSERT(mirrored.center() == whole.center());
    RC_ASSERT(mirrored.enclosing(mirrored) == whole);
    RC_ASSERT(mirrored.intersection(whole) == whole);
}

}  // namespace
}  // namespace lumatile
