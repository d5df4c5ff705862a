#include "displays/ScreenLookup.h"

#include <gtest/gtest.h>

#include "tests/unit/displays/FixedScreenList.h"

namespace lumatile {
namespace {

TEST(ScreenLookup, aPointOnAPanelFindsItsOwnScreen) {
    FixedScreenList list(
        {FixedScreenList::bare({0, 0, 1000, 800}), {{1000, 0, 1000, 800}, {1000, 0, 1000, 770}}});
    EXPECT_EQ(visibleFrameOfScreenContaining(list, {1500, 5}), (Rect{1000, 30, 1000, 770}));
}

TEST(ScreenLookup, aPointInTheGapBetweenScreensFindsNone) {
    FixedScreenList list(
        {FixedScreenList::bare({0, 0, 1000, 800}), FixedScreenList::bare({1200, 0, 1000, 800})});
    EXPECT_EQ(visibleFrameOfScreenContaining(list, {1100, 400}), std::nullopt);
}

TEST(ScreenLookup, theFirstOfOverlappingScreensWins) {
    FixedScreenList list(
        {FixedScreenList::bare({0, 0, 1000, 800}), {{0, 0, 1000, 800}, {0, 0, 500, 800}}});
    EXPECT_EQ(visibleFrameOfScreenContaining(list, {10, 10}), (Rect{0, 0, 1000, 800}));
}

TEST(ScreenLookup, edgesAreHalfOpen) {
    FixedScreenList list{FixedScreenList::bare({0, 0, 1000, 800})};
    EXPECT_NE(visibleFrameOfScreenContaining(list, {0, 0}), std::nullopt);
    EXPECT_EQ(visibleFrameOfScreenContaining(list, {1000, 0}), std::nullopt);
    EXPECT_EQ(visibleFrameOfScreenContaining(list, {0, 800}), std::nullopt);
}

TEST(ScreenLookup, withoutScreensThereIsNone) {
    FixedScreenList list;
    EXPECT_EQ(visibleFrameOfScreenContaining(list, {0, 0}), std::nullopt);
}

}  // namespace
}  // namespace lumatile
