#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "oled_protection/OrbitScheduler.h"

namespace lumatile {
namespace {

using Path = std::vector<Offset>;

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();

TEST(OrbitPath, radiusOneStrideOne) {
    EXPECT_EQ(OrbitScheduler::makePath(1, 1),
              (Path{{-1, -1}, {0, -1}, {1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}}));
}

TEST(OrbitPath, radiusTwoStrideOne) {
    EXPECT_EQ(OrbitScheduler::makePath(2, 1), (Path{{-2, -2},
                                                    {-1, -2},
                                                    {0, -2},
                                                    {1, -2},
                                                    {2, -2},
                                                    {2, -1},
                                                    {2, 0},
                                                    {2, 1},
                                                    {2, 2},
                                                    {1, 2},
                                                    {0, 2},
                                                    {-1, 2},
                                                    {-2, 2},
                                                    {-2, 1},
                                                    {-2, 0},
                                                    {-2, -1}}));
}

TEST(OrbitPath, radiusTwentyStrideFive) {
    const Path path = OrbitScheduler::makePath(20, 5);
    ASSERT_EQ(path.size(), 32U);
    EXPECT_EQ(path.front(), (Offset{-20, -20}));
    EXPECT_EQ(path[8], (Offset{20, -20}));
    EXPECT_EQ(path[16], (Offset{20, 20}));
    EXPECT_EQ(path[24], (Offset{-20, 20}));
    for (std::size_t i = 0; i < path.size(); ++i) {
        const Offset& from = path[i];
        const Offset& to = path[(i + 1) % path.size()];
        EXPECT_EQ(std::abs(to.dx - from.dx) + std::abs(to.dy - from.dy), 5) << i;
    }
}

TEST(OrbitPath, theLastStrideOfASideIsShortenedToReachTheCorner) {
    EXPECT_EQ(OrbitScheduler::makePath(3, 4),
              (Path{{-3, -3}, {1, -3}, {3, -3}, {3, 1}, {3, 3}, {-1, 3}, {-3, 3}, {-3, -1}}));
}

TEST(OrbitPath, aStrideOfTheWholeSideOrMoreVisitsTheCornersOnly) {
    const Path corners{{-2, -2}, {2, -2}, {2, 2}, {-2, 2}};
    EXPECT_EQ(OrbitScheduler::makePath(2, 4), corners);
    EXPECT_EQ(OrbitScheduler::makePath(2, 5), corners);
    EXPECT_EQ(OrbitScheduler::makePath(2, most), corners);
}

TEST(OrbitPath, withoutRadiusOrStrideIsTheSingleZeroOffset) {
    for (const auto& [radius, stride] : std::vector<std::pair<std::int64_t, std::int64_t>>{
             {0, 1}, {1, 0}, {0, 0}, {-1, 1}, {1, -1}, {least, 1}, {5, least}}) {
        EXPECT_EQ(OrbitScheduler::makePath(radius, stride), (Path{{0, 0}})) << radius << stride;
    }
}

TEST(OrbitPath, isBoundedForEveryRadius) {
    const Path largest = OrbitScheduler::makePath(OrbitConfig::maximumRadiusPx, 1);
    EXPECT_EQ(largest.size(), 80'000U);
    EXPECT_EQ(OrbitScheduler::makePath(OrbitConfig::maximumRadiusPx + 1, 1), largest);
    EXPECT_EQ(OrbitScheduler::makePath(most, 1), largest);
    EXPECT_EQ(OrbitScheduler::makePath(most, most).size(), 4U);
}

RC_GTEST_PROP(OrbitPath, walksThePerimeterWithinItsRadiusAndCloses, ()) {
    const auto radius = *rc::gen::inRange<std::int64_t>(1, 120);
    const auto stride = *rc::gen::inRange<std::int64_t>(1, 150);
    const Path path = OrbitScheduler::makePath(radius, stride);
    const std::int64_t pointsOfASide = (2 * radius + stride - 1) / stride;
    RC_ASSERT(path.size() == static_cast<std::size_t>(4 * pointsOfASide));

    const auto r = static_cast<double>(radius);
    const auto s = static_cast<double>(stride);
    double walked = 0;
    std::set<std::pair<double, double>> seen;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const Offset& from = path[i];
        const Offset& to = path[(i + 1) % path.size()];
        RC_ASSERT(std::max(std::abs(from.dx), std::abs(from.dy)) == r);
        const double dx = std::abs(to.dx - from.dx);
        const double dy = std::abs(to.dy - from.dy);
        RC_ASSERT(dx == 0 || dy == 0);
        RC_ASSERT(dx + dy > 0);
        RC_ASSERT(dx + dy <= s);
        walked += dx + dy;
        seen.emplace(from.dx, from.dy);
    }
    // Once round, no point twice.
    RC_ASSERT(walked == 8 * r);
    RC_ASSERT(seen.size() == path.size());
    RC_ASSERT(seen.contains({-r, -r}));
    RC_ASSERT(seen.contains({r, -r}));
    RC_ASSERT(seen.contains({r, r}));
    RC_ASSERT(seen.contains({-r, r}));
}

}  // namespace
}  // namespace lumatile
