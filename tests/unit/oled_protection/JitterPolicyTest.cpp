#include "oled_protection/JitterPolicy.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/support/Arbitrary.h"
#include "tests/unit/oled_protection/JitterClock.h"

namespace lumatile {
namespace {

constexpr JitterPolicy hourly{3, 3600};
constexpr Rect area{0, 25, 1920, 1055};
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

std::uint64_t bits(double value) { return std::bit_cast<std::uint64_t>(value); }

/// A time at which the offset is this, for tests that need one.
double timeOf(const JitterPolicy& policy, const Offset& wanted) {
    const std::optional<double> time = timeOfOffset(policy, wanted);
    EXPECT_TRUE(time.has_value());
    return time.value_or(0);
}

/// The offset as it is defined, with wrapping 64-bit integers.
Offset reference(double tolerance, std::int64_t slot) {
    const auto wrapped = static_cast<std::uint64_t>(slot);
    const auto a = static_cast<double>((wrapped * 31153U) % 65536U);
    const auto b = static_cast<double>((wrapped * 40503U) % 65536U);
    return {std::round(tolerance * (2 * a / 65535 - 1)),
            std::round(tolerance * (2 * b / 65535 - 1))};
}

TEST(JitterOffset, isNoneWithoutTolerance) {
    for (const double time : {0.0, 3600.0, 1.7e9, -5000.0, infinity, notANumber}) {
        EXPECT_EQ((JitterPolicy{0, 3600}.offset(time)), Offset{});
        EXPECT_EQ((JitterPolicy{-3, 3600}.offset(time)), Offset{});
    }
}

TEST(JitterOffset, isNoneWithoutASlotLength) {
    EXPECT_EQ((JitterPolicy{3, 0}.offset(1.7e9)), Offset{});
    EXPECT_EQ((JitterPolicy{3, -10}.offset(1.7e9)), Offset{});
}

TEST(JitterOffset, ofSlotOneAtToleranceThree) {
    EXPECT_EQ(hourly.offset(3600), (Offset{0, 1}));
    EXPECT_FALSE(std::signbit(hourly.offset(3600).dx));
}

TEST(JitterOffset, ofSlotZeroIsTheToleranceToTheTopLeft) {
    EXPECT_EQ(hourly.offset(0), (Offset{-3, -3}));
    EXPECT_EQ((JitterPolicy{20, 10}.offset(9.999)), (Offset{-20, -20}));
}

TEST(JitterOffset, staysForTheWholeSlotAndChangesAtItsEnd) {
    EXPECT_EQ(hourly.offset(3600), hourly.offset(7199.999));
    EXPECT_EQ(hourly.offset(7200), reference(3, 2));
    EXPECT_NE(hourly.offset(7200), hourly.offset(7199.999));
}

TEST(JitterOffset, demonstrationSlotsLastTenSeconds) {
    const JitterPolicy exaggerated{20, 10};
    EXPECT_EQ(exaggerated.offset(1'700'000'000), reference(20, 170'000'000));
    EXPECT_EQ(exaggerated.offset(1'700'000'009.9), reference(20, 170'000'000));
    EXPECT_EQ(exaggerated.offset(1'700'000'010), reference(20, 170'000'001));
}

TEST(JitterOffset, timesBeforeTheEpochTruncateTowardZeroAndWrap) {
    EXPECT_EQ(hourly.offset(-1), reference(3, 0));
    EXPECT_EQ(hourly.offset(-3599.9), reference(3, 0));
    EXPECT_EQ(hourly.offset(-3600), reference(3, -1));
    EXPECT_EQ(hourly.offset(-3600.0 * 100'000), reference(3, -100'000));
}

TEST(JitterOffset, absurdTimesAreDefined) {
    // A slot number above 2^69 is a multiple of 2^16, so none of its low bits are set.
    for (const double time : {1e300, -1e300, std::numeric_limits<double>::max()}) {
        EXPECT_EQ(hourly.offset(time), reference(3, 0)) << time;
    }
    EXPECT_EQ((JitterPolicy{3, 1}.offset(0x1p63)), reference(3, 0));
    EXPECT_EQ((JitterPolicy{3, 1}.offset(0x1p53 + 2)), reference(3, (std::int64_t{1} << 53) + 2));
    for (const double time : {infinity, -infinity, notANumber}) {
        EXPECT_EQ(hourly.offset(time), Offset{}) << time;
    }
}

TEST(JitterOffset, absurdPoliciesAreDefined) {
    EXPECT_EQ((JitterPolicy{infinity, 3600}.offset(3600)), Offset{});
    EXPECT_EQ((JitterPolicy{notANumber, 3600}.offset(3600)), Offset{});
    EXPECT_EQ((JitterPolicy{3, notANumber}.offset(3600)), Offset{});
    EXPECT_EQ((JitterPolicy{3, infinity}.offset(3600)), reference(3, 0));
    // So short a slot that its number overflows a double.
    EXPECT_EQ((JitterPolicy{3, std::numeric_limits<double>::denorm_min()}.offset(1.7e9)), Offset{});
}

TEST(JitterOffset, isZeroInSomeHours) {
    EXPECT_TRUE(timeOfOffset(hourly, Offset{0, 0}).has_value());
}

RC_GTEST_PROP(JitterOffset, agreesWithWrappingIntegers, ()) {
    const auto slot =
        *rc::gen::inRange<std::int64_t>(-(std::int64_t{1} << 40), std::int64_t{1} << 40);
    const int tolerance = *rc::gen::inRange(1, 10'001);
    const auto time = static_cast<double>(slot) * 3600;
    RC_ASSERT((JitterPolicy{static_cast<double>(tolerance), 3600}.offset(time)) ==
              reference(tolerance, slot));
}

RC_GTEST_PROP(JitterOffset, isWholePixelsWithinAWholeTolerance, ()) {
    const double tolerance = *rc::gen::inRange(1, 10'000);
    const double time = *arbitrary::number(-1'000'000, 1'000'000) * 3600;
    const Offset offset = JitterPolicy{tolerance, 3600}.offset(time);
    for (const double value : {offset.dx, offset.dy}) {
        RC_ASSERT(value == std::trunc(value));
        RC_ASSERT(std::abs(value) <= tolerance);
    }
}

TEST(JitterAdjust, leftHalfMovesItsRightEdgeOnly) {
    const Rect leftHalf{0, 25, 960, 1055};
    EXPECT_EQ(hourly.adjust(leftHalf, area, timeOf(hourly, {2, -1})), (Rect{0, 25, 962, 1055}));
    EXPECT_EQ(hourly.adjust(leftHalf, area, timeOf(hourly, {-2, 1})), (Rect{0, 25, 958, 1055}));
}

TEST(JitterAdjust, movesEachKindOfEdge) {
    const double time = timeOf(hourly, {2, -1});
    struct Case {
        std::string name;
        Rect frame;
        Rect expected;
    };
    for (const Case& c : {
             Case{"right half", {960, 25, 960, 1055}, {962, 25, 958, 1055}},
             Case{"top half", {0, 25, 1920, 500}, {0, 25, 1920, 499}},
             Case{"bottom half", {0, 525, 1920, 555}, {0, 524, 1920, 556}},
             Case{"top left quarter", {0, 25, 960, 500}, {0, 25, 962, 499}},
             Case{"middle third", {640, 25, 640, 1055}, {642, 25, 640, 1055}},
             Case{"in the middle", {500, 300, 700, 400}, {502, 299, 700, 400}},
             Case{"maximised", area, area},
         }) {
        EXPECT_EQ(hourly.adjust(c.frame, area, time), c.expected) << c.name;
    }
}

TEST(JitterAdjust, edgesUpToHalfAPixelFromTheBorderStay) {
    const double time = timeOf(hourly, {2, -1});
    EXPECT_EQ(hourly.adjust({0.5, 25.5, 1919, 1054}, area, time), (Rect{0.5, 25.5, 1919, 1054}));
    EXPECT_EQ(hourly.adjust({0.625, 25, 959.375, 1055}, area, time).x, 2.625);
}

TEST(JitterAdjust, framesUpToHalfAPixelOutsideAreTrimmed) {
    const double time = timeOf(hourly, {2, -1});
    EXPECT_EQ(hourly.adjust({-0.5, 24.5, 1921, 1056}, area, time), area);
    EXPECT_EQ(hourly.adjust({-0.5, 25, 960, 1055}, area, time), (Rect{0, 25, 961.5, 1055}));
}

TEST(JitterAdjust, framesFurtherOutsideMoveWhole) {
    const double time = timeOf(hourly, {2, -1});
    for (const Rect& frame :
         {Rect{-1, 25, 960, 1055}, Rect{0, 24, 960, 1056}, Rect{961, 25, 960, 1055},
          Rect{0, 26, 960, 1055}, Rect{1500, 300, 900, 400}, Rect{5000, 5000, 10, 10}}) {
        EXPECT_EQ(hourly.adjust(frame, area, time), frame.offsetBy(2, -1)) << frame.x;
    }
}

TEST(JitterAdjust, anInnerEdgePushedOverTheBorderIsTrimmed) {
    const double time = timeOf(hourly, {-3, 2});
    EXPECT_EQ(hourly.adjust({1, 100, 500, 300}, area, time), (Rect{0, 102, 498, 300}));
}

TEST(JitterAdjust, aShiftThatWouldCollapseTheFrameLeavesItWhole) {
    const double time = timeOf(hourly, {3, 2});
    // The left edge would pass the right one, which stays; the free vertical axis stays as well.
    EXPECT_EQ(hourly.adjust({1918, 100, 2, 300}, area, time), (Rect{1918, 100, 2, 300}));
    // The left edge would meet the right one.
    EXPECT_EQ(hourly.adjust({1917, 100, 3, 300}, area, time), (Rect{1917, 100, 3, 300}));
    // Both edges are inner ones and leave the area.
    EXPECT_EQ(hourly.adjust({1918, 100, 1, 300}, area, time), (Rect{1918, 100, 1, 300}));
    const double up = timeOf(hourly, {0, -3});
    EXPECT_EQ(hourly.adjust({100, 25, 300, 2}, area, up), (Rect{100, 25, 300, 2}));
}

TEST(JitterAdjust, framesWithoutExtentStay) {
    const double time = timeOf(hourly, {2, -1});
    EXPECT_EQ(hourly.adjust({500, 500, 0, 100}, area, time), (Rect{500, 500, 0, 100}));
    EXPECT_EQ(hourly.adjust({500, 500, 100, 0}, area, time), (Rect{500, 500, 100, 0}));
}

TEST(JitterAdjust, framesOfNegativeSizeSpanTheSameEdges) {
    const Rect adjusted = hourly.adjust({960, 1080, -960, -1055}, area, timeOf(hourly, {2, -1}));
    EXPECT_EQ(adjusted.minX(), 0);
    EXPECT_EQ(adjusted.maxX(), 962);
    EXPECT_EQ(adjusted.minY(), 25);
    EXPECT_EQ(adjusted.maxY(), 1080);
}

TEST(JitterAdjust, zeroToleranceReturnsTheFrameTrimmedToTheArea) {
    const JitterPolicy off{0, 3600};
    for (const double time : {0.0, 3600.0, 1.7e9}) {
        EXPECT_EQ(off.adjust({100.25, 100, 500, 300}, area, time), (Rect{100.25, 100, 500, 300}));
        EXPECT_EQ(off.adjust({-0.5, 25, 960, 1055}, area, time), (Rect{0, 25, 959.5, 1055}));
        EXPECT_EQ(off.adjust({-1, 25, 960, 1055}, area, time), (Rect{-1, 25, 960, 1055}));
    }
}

TEST(JitterAdjust, aFrameThatIsNoNumberIsReturnedWithoutHarm) {
    const Rect adjusted = hourly.adjust({notANumber, 100, 500, 300}, area, 0);
    EXPECT_TRUE(std::isnan(adjusted.x));
    EXPECT_EQ(adjusted.y, 97);
}

TEST(JitterAdjust, windowsThatShareAnInnerEdgeMeetThereInEveryHour) {
    const Rect left{0, 25, 640, 1055};
    const Rect middle{640, 25, 640, 1055};
    const Rect right{1280, 25, 640, 1055};
    for (int hour = 0; hour < slotsUntilRepeat; ++hour) {
        const double time = hour * 3600.0;
        const Rect a = hourly.adjust(left, area, time);
        const Rect b = hourly.adjust(middle, area, time);
        const Rect c = hourly.adjust(right, area, time);
        ASSERT_EQ(a.maxX(), b.minX()) << hour;
        ASSERT_EQ(b.maxX(), c.minX()) << hour;
        ASSERT_EQ(a.minX(), area.minX()) << hour;
        ASSERT_EQ(c.maxX(), area.maxX()) << hour;
        ASSERT_EQ(a.maxX(), 640 + hourly.offset(time).dx) << hour;
    }
}

JitterPolicy arbitraryPolicy() {
    return {static_cast<double>(*rc::gen::inRange(1, 21)), *rc::gen::element(10.0, 3600.0)};
}

double arbitraryTime() { return *arbitrary::number(0, 1'800'000) * 1000; }

/// A display with room for windows that survive every shift.
Rect arbitraryArea() {
    return {*arbitrary::number(-4000, 4000), *arbitrary::number(-4000, 4000),
            *arbitrary::number(800, 8000), *arbitrary::number(800, 8000)};
}

RC_GTEST_PROP(JitterAdjust, neighboursAtAnySeamKeepMeeting, ()) {
    const JitterPolicy policy = arbitraryPolicy();
    const Rect screen = arbitraryArea();
    const double time = arbitraryTime();
    const double seam = screen.x + *arbitrary::number(100, 700);
    const Rect left{screen.x, screen.y, seam - screen.x, screen.height};
    const Rect right{seam, screen.y, screen.maxX() - seam, screen.height};

    const Rect adjustedLeft = policy.adjust(left, screen, time);
    const Rect adjustedRight = policy.adjust(right, screen, time);
    RC_ASSERT(std::abs(adjustedLeft.maxX() - adjustedRight.minX()) < 1e-9);
    RC_ASSERT(std::abs(adjustedLeft.maxX() - (seam + policy.offset(time).dx)) < 1e-9);
    RC_ASSERT(adjustedLeft.minX() == screen.minX());
    RC_ASSERT(std::abs(adjustedRight.maxX() - screen.maxX()) < 1e-9);
}

RC_GTEST_PROP(JitterAdjust, maximisedWindowsAreUnchangedAtEveryTime, ()) {
    const JitterPolicy policy = arbitraryPolicy();
    const Rect screen = arbitraryArea();
    RC_ASSERT(policy.adjust(screen, screen, arbitraryTime()) == screen);
}

RC_GTEST_PROP(JitterAdjust, noEdgeOfAFrameOnTheDisplayShiftsFurtherThanTheTolerance, ()) {
    const JitterPolicy policy = arbitraryPolicy();
    const Rect screen = arbitraryArea();
    const Rect frame{screen.x + *arbitrary::number(0, 400), screen.y + *arbitrary::number(0, 400),
                     *arbitrary::number(1, 400), *arbitrary::number(1, 400)};
    const Rect adjusted = policy.adjust(frame, screen, arbitraryTime());
    const double most = policy.tolerancePx + 1e-9;
    RC_ASSERT(std::abs(adjusted.minX() - frame.minX()) <= most);
    RC_ASSERT(std::abs(adjusted.maxX() - frame.maxX()) <= most);
    RC_ASSERT(std::abs(adjusted.minY() - frame.minY()) <= most);
    RC_ASSERT(std::abs(adjusted.maxY() - frame.maxY()) <= most);
    RC_ASSERT(screen.grownBy(1e-9).contains(adjusted));
    RC_ASSERT(adjusted.width > 0);
    RC_ASSERT(adjusted.height > 0);
}

RC_GTEST_PROP(JitterAdjust, anAxisThatOnlyMovesKeepsItsSizeBitForBit, ()) {
    const JitterPolicy policy = arbitraryPolicy();
    const Rect screen = arbitraryArea();
    const double time = arbitraryTime();
    // Free on the horizontal axis, filling the vertical one.
    const Rect frame{screen.x + *arbitrary::number(50, 300), screen.y, *arbitrary::number(50, 300),
                     screen.height};
    const Rect adjusted = policy.adjust(frame, screen, time);
    RC_ASSERT(bits(adjusted.x) == bits(frame.x + policy.offset(time).dx));
    RC_ASSERT(bits(adjusted.width) == bits(frame.width));
    RC_ASSERT(bits(adjusted.y) == bits(frame.y));
    RC_ASSERT(bits(adjusted.height) == bits(frame.height));
}

TEST(JitterEdgeShift, isThatOfTheMinEdgesOrElseOfTheMaxEdges) {
    const Rect frame{100, 200, 300, 400};
    EXPECT_EQ(JitterPolicy::edgeShift(frame, frame), Offset{});
    EXPECT_EQ(JitterPolicy::edgeShift(frame, {102, 199, 300, 400}), (Offset{2, -1}));
    EXPECT_EQ(JitterPolicy::edgeShift(frame, {100, 200, 302, 399}), (Offset{2, -1}));
    EXPECT_EQ(JitterPolicy::edgeShift(frame, {102, 200, 298, 399}), (Offset{2, -1}));
}

TEST(JitterEdgeShift, reportsWhatAdjustApplied) {
    const double time = timeOf(hourly, {2, -1});
    const Rect leftHalf{0, 25, 960, 1055};
    EXPECT_EQ(JitterPolicy::edgeShift(leftHalf, hourly.adjust(leftHalf, area, time)),
              (Offset{2, 0}));
    const Rect quarter{960, 500, 960, 580};
    EXPECT_EQ(JitterPolicy::edgeShift(quarter, hourly.adjust(quarter, area, time)),
              (Offset{2, -1}));
    EXPECT_EQ(JitterPolicy::edgeShift(area, hourly.adjust(area, area, time)), Offset{});
}

}  // namespace
}  // namespace lumatile
