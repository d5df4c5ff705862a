#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

#include "platform/kwin/KWinPlacing.h"

namespace lumatile {
namespace {

KWinWindow window(const Rect& frame = {100, 100, 400, 300}) {
    KWinWindow made;
    made.record.id = "{a}";
    made.record.frame = frame;
    made.record.isMovable = true;
    made.record.isResizable = true;
    return made;
}

TEST(KWinPlacing, roundsEdgesAndNeverSizes) {
    // Thirds of 1366, one beside the other.
    const auto left = KWinPlacing::plan(window(), {Point{0, 0}, Size{1366.0 / 3, 768}}, {});
    const auto middle =
        KWinPlacing::plan(window(), {Point{1366.0 / 3, 0}, Size{1366.0 / 3, 768}}, {});
    ASSERT_TRUE(left && middle);
    EXPECT_EQ(left->target, (Rect{0, 0, 455, 768}));
    EXPECT_EQ(middle->target, (Rect{455, 0, 456, 768}));
}

RC_GTEST_PROP(KWinPlacing, neighboursMeet, ()) {
    const double x = *rc::gen::inRange(-5000, 5000) / 7.0;
    const double width = *rc::gen::inRange(70, 20000) / 7.0;
    const auto left = KWinPlacing::plan(window(), {Point{x, 0}, Size{width, 100}}, {});
    const auto right = KWinPlacing::plan(window(), {Point{x + width, 0}, Size{width, 100}}, {});
    RC_ASSERT(left && right);
    RC_ASSERT(left->target.maxX() == right->target.minX());
}

TEST(KWinPlacing, aMoveLeavesTheSizeWhateverTheFractions) {
    const auto placing = KWinPlacing::plan(window(), {Point{10.5, 20.4}, std::nullopt}, {});
    ASSERT_TRUE(placing);
    EXPECT_EQ(placing->target, (Rect{11, 20, 400, 300}));
    const KWinPlaceOrder order = placing->order(window());
    EXPECT_EQ(order.x, 11);
    EXPECT_FALSE(order.width || order.height);
}

TEST(KWinPlacing, theSpaceBeginsAtThePrimaryScreen) {
    const auto placing =
        KWinPlacing::plan(window(), {Point{10, 20}, Size{100, 100}}, Point{1920, 50});
    ASSERT_TRUE(placing);
    EXPECT_EQ(placing->target, (Rect{1930, 70, 100, 100}));
}

TEST(KWinPlacing, whatCannotBeAskedForIsNotAskedFor) {
    KWinWindow fullScreen = window();
    fullScreen.record.isFullScreen = true;
    KWinWindow fixed = window();
    fixed.record.isMovable = false;
    KWinWindow shaded = window();
    shaded.record.isShaded = true;
    const PlacingWish wish{Point{1, 2}, Size{30, 40}};
    EXPECT_TRUE(KWinPlacing::plan(window(), wish, {}));
    EXPECT_FALSE(KWinPlacing::plan(fullScreen, wish, {}));
    EXPECT_FALSE(KWinPlacing::plan(fixed, wish, {}));
    EXPECT_TRUE(KWinPlacing::plan(shaded, wish, {})) << "it is rolled down";
    EXPECT_FALSE(KWinPlacing::plan(shaded, {Point{1, 2}, std::nullopt}, {}));
    EXPECT_FALSE(KWinPlacing::plan(window(), {}, {}));
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(KWinPlacing::plan(window(), {Point{none, 2}, std::nullopt}, {}));
    EXPECT_FALSE(KWinPlacing::plan(window(), {Point{1e7, 2}, std::nullopt}, {}));
    EXPECT_FALSE(KWinPlacing::plan(window(), {Point{1, 2}, Size{-30, 40}}, {}));
    EXPECT_FALSE(KWinPlacing::plan(window(), {Point{1, 2}, Size{0.2, 40}}, {}));
}

TEST(KWinPlacing, nothingIsLeftToAskWhereTheWindowIsThere) {
    const PlacingWish wish{Point{100.2, 99.8}, Size{400, 300}};
    EXPECT_TRUE(KWinPlacing::plan(window(), wish, {})->isSo);
    KWinWindow maximized = window();
    maximized.record.isMaximized = true;
    EXPECT_FALSE(KWinPlacing::plan(maximized, wish, {})->isSo);
    KWinWindow tiled = window();
    tiled.record.isTiled = true;
    EXPECT_FALSE(KWinPlacing::plan(tiled, wish, {})->isSo);
    KWinWindow shaded = window();
    shaded.record.isShaded = true;
    EXPECT_FALSE(KWinPlacing::plan(shaded, wish, {})->isSo);
}

TEST(KWinPlacing, readsTheUnroundedFrameAsLongAsTheWindowIsWhatItBecame) {
    KWinWindow placed = window();
    const auto placing = KWinPlacing::plan(placed, {Point{10.4, 20.4}, Size{100.4, 50.4}}, {});
    ASSERT_TRUE(placing);
    placed.record.frame = placing->target;
    placed.written = placing->outcome(placed);
    EXPECT_EQ(KWinPlacing::frameOf(placed), (Rect{10.4, 20.4, 100.4, 50.4}));
    placed.record.frame.x += 1;
    EXPECT_EQ(KWinPlacing::frameOf(placed), placed.record.frame);
}

TEST(KWinPlacing, readsTheUnroundedFrameOfAWindowThatAnswersLate) {
    KWinWindow late = window();
    const auto placing = KWinPlacing::plan(late, {Point{10.4, 20.4}, Size{100.4, 50.4}}, {});
    ASSERT_TRUE(placing);
    late.written = placing->expectation();
    EXPECT_EQ(KWinPlacing::frameOf(late), late.record.frame) << "it is not there yet";
    late.record.frame = placing->target;
    EXPECT_EQ(KWinPlacing::frameOf(late), (Rect{10.4, 20.4, 100.4, 50.4}));
}

TEST(KWinPlacing, readsKWinsNumbersForWhatWasNotMet) {
    KWinWindow placed = window();
    const auto placing = KWinPlacing::plan(placed, {Point{10.4, 20.4}, Size{100.4, 50.4}}, {});
    ASSERT_TRUE(placing);
    placed.record.frame = {10, 20, 96, 51};  // Its program grows in steps.
    placed.written = placing->outcome(placed);
    EXPECT_EQ(KWinPlacing::frameOf(placed), (Rect{10.4, 20.4, 96, 50.4}));
}

}  // namespace
}  // namespace lumatile
