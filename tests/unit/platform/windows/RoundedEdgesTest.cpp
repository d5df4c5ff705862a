#include "platform/windows/RoundedEdges.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace lumatile {
namespace {

constexpr double farthest = 1000;

TEST(RoundedEdges, halvesGoUpwardsOnBothSidesOfZero) {
    EXPECT_EQ(roundedEdge(2.5, farthest), 3);
    EXPECT_EQ(roundedEdge(-2.5, farthest), -2);
    EXPECT_EQ(roundedEdge(2.49, farthest), 2);
}

TEST(RoundedEdges, refusesWhatIsNoNumberOrTooFar) {
    EXPECT_FALSE(roundedEdge(std::numeric_limits<double>::quiet_NaN(), farthest));
    EXPECT_FALSE(roundedEdge(std::numeric_limits<double>::infinity(), farthest));
    EXPECT_TRUE(roundedEdge(1000.4, farthest));
    EXPECT_FALSE(roundedEdge(1000.5, farthest));
    EXPECT_FALSE(roundedEdge(-1001, farthest));
}

TEST(RoundedEdges, refusesRectanglesNarrowerThanAPixel) {
    EXPECT_FALSE(roundedEdges({10.1, 10, 0.3, 50}, farthest));
    EXPECT_FALSE(roundedEdges({10, 10, 50, 0}, farthest));
    EXPECT_FALSE(roundedEdges({10, 10, -50, 50}, farthest));
    EXPECT_EQ(roundedEdges({10.4, 10, 0.3, 50}, farthest), (Rect{10, 10, 1, 50}));
}

TEST(RoundedEdges, refusesARectangleWhoseFarEdgeIsTooFar) {
    EXPECT_FALSE(roundedEdges({990, 0, 20, 20}, farthest));
    EXPECT_TRUE(roundedEdges({980, 0, 20, 20}, farthest));
}

RC_GTEST_PROP(RoundedEdges, neighboursThatMeetStillMeet, ()) {
    const auto number = [](int from, int to) {
        return static_cast<double>(*rc::gen::inRange(from * 64, to * 64)) / 64;
    };
    const Rect left{number(-400, 400), number(-400, 400), number(1, 400), number(1, 400)};
    const Rect right{left.x + left.width, left.y, number(1, 100), left.height};
    const auto roundedLeft = roundedEdges(left, farthest);
    const auto roundedRight = roundedEdges(right, farthest);
    RC_ASSERT(roundedLeft.has_value());
    RC_ASSERT(roundedRight.has_value());
    RC_ASSERT(roundedLeft->maxX() == roundedRight->x);
    RC_ASSERT(roundedLeft->maxY() == roundedRight->maxY());
    RC_ASSERT(std::abs(roundedLeft->x - left.x) <= 0.5);
    RC_ASSERT(std::abs(roundedLeft->maxX() - left.maxX()) <= 0.5);
}

}  // namespace
}  // namespace lumatile
