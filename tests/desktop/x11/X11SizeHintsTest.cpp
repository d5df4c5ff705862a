#include "platform/x11/X11SizeHints.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <vector>

#include "platform/x11/X11WindowFrame.h"

namespace lumatile {
namespace {

X11PixelRect sized(int width, int height) { return {7, 8, width, height}; }

TEST(X11SizeHints, withoutRulesEverySizeStays) {
    EXPECT_EQ(X11SizeHints{}.constrained(sized(333, 211)), sized(333, 211));
    EXPECT_EQ(X11SizeHints::decode({}).constrained(sized(1, 1)), sized(1, 1));
}

TEST(X11SizeHints, stepsAreCountedFromTheBase) {
    X11SizeHints hints;
    hints.baseWidth = 6;
    hints.baseHeight = 4;
    hints.stepWidth = 9;
    hints.stepHeight = 17;
    hints.minimumWidth = 6 + 10 * 9;
    hints.minimumHeight = 4 + 4 * 17;
    EXPECT_EQ(hints.constrained(sized(960, 1055)), sized(6 + 106 * 9, 4 + 61 * 17));
    EXPECT_EQ(hints.constrained(sized(20, 20)), sized(96, 72));
}

TEST(X11SizeHints, minimumWinsOverMaximum) {
    X11SizeHints hints;
    hints.minimumWidth = 500;
    hints.maximumWidth = 300;
    hints.maximumHeight = 200;
    EXPECT_EQ(hints.constrained(sized(400, 400)), sized(500, 200));
}

TEST(X11SizeHints, aspectShortensTheLongerSide) {
    X11SizeHints hints;
    hints.minimumAspect = {1, 1};
    hints.maximumAspect = {2, 1};
    EXPECT_EQ(hints.constrained(sized(900, 300)), sized(600, 300));
    EXPECT_EQ(hints.constrained(sized(300, 900)), sized(300, 300));
    EXPECT_EQ(hints.constrained(sized(450, 300)), sized(450, 300));
}

TEST(X11SizeHints, baseAndMinimumStandInForEachOther) {
    std::vector<std::uint32_t> items(18);
    items[0] = 1U << 4U | 1U << 6U;  // Minimum and steps.
    items[5] = 100;
    items[6] = 50;
    items[9] = 10;
    items[10] = 10;
    EXPECT_EQ(X11SizeHints::decode(items).constrained(sized(119, 69)), sized(110, 60));
    items[0] = 1U << 8U | 1U << 6U;  // Base and steps.
    items[15] = 30;
    items[16] = 20;
    EXPECT_EQ(X11SizeHints::decode(items).constrained(sized(5, 5)), sized(30, 20));
    EXPECT_EQ(X11SizeHints::decode(items).constrained(sized(49, 49)), sized(40, 40));
}

TEST(X11SizeHints, shortPropertyIsNoRule) {
    const std::array<std::uint32_t, 5> items{0xffffffff, 1, 1, 1, 1};
    EXPECT_EQ(X11SizeHints::decode(items), X11SizeHints{});
}

RC_GTEST_PROP(X11SizeHints, whateverAProgramWritesTheResultIsASize, ()) {
    const auto items = *rc::gen::container<std::vector<std::uint32_t>>(
        18,
        rc::gen::oneOf(rc::gen::arbitrary<std::uint32_t>(),
                       rc::gen::element<std::uint32_t>(0, 1, 0x7fffffff, 0x80000000, 0xffffffff)));
    const X11PixelRect client = sized(*rc::gen::inRange(1, 32000), *rc::gen::inRange(1, 32000));
    const X11PixelRect result = X11SizeHints::decode(items).constrained(client);
    RC_ASSERT(result.hasOriginOf(client));
    RC_ASSERT(result.width >= 1 && result.height >= 1);
    RC_ASSERT(result.width <= 2 * X11SizeHints::unlimited);
    RC_ASSERT(result.height <= 2 * X11SizeHints::unlimited);
}

RC_GTEST_PROP(X11SizeHints, constrainingTwiceChangesNothing, ()) {
    X11SizeHints hints;
    hints.minimumWidth = *rc::gen::inRange(1, 300);
    hints.minimumHeight = *rc::gen::inRange(1, 300);
    hints.baseWidth = *rc::gen::inRange(0, 50);
    hints.baseHeight = *rc::gen::inRange(0, 50);
    hints.stepWidth = *rc::gen::inRange(1, 30);
    hints.stepHeight = *rc::gen::inRange(1, 30);
    const auto once = hints.constrained(sized(*rc::gen::inRange(1, 3000), 700));
    RC_ASSERT(hints.constrained(once) == once);
}

TEST(X11SizeHints, outerFrameIsConstrainedThroughTheClient) {
    X11SizeHints hints;
    hints.stepWidth = 10;
    const X11WindowFrame frame{{}, {5, 5, 29, 5}, {}};
    EXPECT_EQ(frame.constrained({100, 50, 119, 300}, hints), (X11PixelRect{100, 50, 110, 300}));
}

}  // namespace
}  // namespace lumatile
