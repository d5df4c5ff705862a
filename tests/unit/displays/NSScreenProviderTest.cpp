#include "displays/NSScreenProvider.h"

#include <gtest/gtest.h>

#include "tests/unit/displays/FixedScreenList.h"

namespace lumatile {
namespace {

PlatformScreen primaryWithMenuBar() { return {{0, 0, 1920, 1080}, {0, 0, 1920, 1055}}; }

TEST(NSScreenProvider, visibleFrameIsBelowTheMenuBar) {
    FixedScreenList list{primaryWithMenuBar()};
    EXPECT_EQ(NSScreenProvider(list).screens(), (std::vector<Rect>{{0, 25, 1920, 1055}}));
}

TEST(NSScreenProvider, dockAtTheBottomShortensTheFrameAndKeepsItsTop) {
    FixedScreenList list{{{0, 0, 1920, 1080}, {0, 70, 1920, 985}}};
    EXPECT_EQ(NSScreenProvider(list).screens(), (std::vector<Rect>{{0, 25, 1920, 985}}));
}

TEST(NSScreenProvider, screenAboveThePrimaryHasANegativeY) {
    FixedScreenList list{primaryWithMenuBar(), FixedScreenList::bare({0, 1080, 2560, 1440})};
    EXPECT_EQ(NSScreenProvider(list).screens().at(1), (Rect{0, -1440, 2560, 1440}));
}

TEST(NSScreenProvider, theAxisFlipsAboutTheFullHeightOfThePrimaryForEveryScreen) {
    // Its lower edge is 200 above the primary's, so it ends 200 before the primary's lower edge.
    FixedScreenList list{primaryWithMenuBar(), FixedScreenList::bare({1920, 200, 1080, 1920})};
    EXPECT_EQ(NSScreenProvider(list).screens().at(1), (Rect{1920, -1040, 1080, 1920}));
}

TEST(NSScreenProvider, pointOnASeamBelongsToTheScreenWhoseLeftEdgeItIs) {
    FixedScreenList list(
        {FixedScreenList::bare({0, 0, 1000, 800}), FixedScreenList::bare({1000, 0, 1000, 800})});
    const NSScreenProvider provider(list);
    EXPECT_EQ(provider.visibleFrameAt({999.9, 10}), (Rect{0, 0, 1000, 800}));
    EXPECT_EQ(provider.visibleFrameAt({1000, 10}), (Rect{1000, 0, 1000, 800}));
}

TEST(NSScreenProvider, pointOutsideEveryVisibleFrameGetsTheFirstScreen) {
    FixedScreenList list{primaryWithMenuBar(), FixedScreenList::bare({1920, 0, 1080, 1080})};
    const NSScreenProvider provider(list);
    EXPECT_EQ(provider.visibleFrameAt({500, 10}), (Rect{0, 25, 1920, 1055}));
    EXPECT_EQ(provider.visibleFrameAt({-400, 9000}), (Rect{0, 25, 1920, 1055}));
    EXPECT_EQ(provider.visibleFrameAt({2000, 10}), (Rect{1920, 0, 1080, 1080}));
}

TEST(NSScreenProvider, withoutScreensThereIsNothing) {
    FixedScreenList list;
    const NSScreenProvider provider(list);
    EXPECT_TRUE(provider.screens().empty());
    EXPECT_EQ(provider.visibleFrameAt({0, 0}), std::nullopt);
}

TEST(NSScreenProvider, aScreenPluggedInIsSeenAtTheNextRequest) {
    FixedScreenList list{primaryWithMenuBar()};
    const NSScreenProvider provider(list);
    EXPECT_EQ(provider.screens().size(), 1U);
    list.list.push_back(FixedScreenList::bare({1920, 0, 1080, 1080}));
    EXPECT_EQ(provider.screens().size(), 2U);
    EXPECT_EQ(provider.visibleFrameAt({2000, 100}), (Rect{1920, 0, 1080, 1080}));
}

}  // namespace
}  // namespace lumatile
