#include "platform/simulated/SimulatedScreens.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace lumatile {
namespace {

TEST(SimulatedScreens, noScreensNoList) {
    SimulatedScreens screens;
    EXPECT_TRUE(screens.screens().empty());
    EXPECT_FALSE(screens.frame("left"));
}

TEST(SimulatedScreens, thePlatformsSpaceBeginsAtThePrimarysBottomLeftCorner) {
    SimulatedScreens screens;
    screens.plug("main", {0, 0, 1920, 1080});
    screens.addPanel("main", ScreenEdge::top, 25);
    ASSERT_EQ(screens.screens().size(), 1U);
    EXPECT_EQ(screens.screens()[0].frame, (Rect{0, 0, 1920, 1080}));
    EXPECT_EQ(screens.screens()[0].visibleFrame, (Rect{0, 0, 1920, 1055}));
    EXPECT_EQ(screens.visibleFrame("main"), (Rect{0, 25, 1920, 1055}));

    // A portrait screen to the right whose top edge is 200 px higher.
    screens.plug("tall", {1920, -200, 1080, 1920});
    EXPECT_EQ(screens.screens()[1].frame, (Rect{1920, 1080 - 1720, 1080, 1920}));
    EXPECT_EQ(screens.frame("tall"), (Rect{1920, -200, 1080, 1920}));
}

TEST(SimulatedScreens, panelsOnEveryEdgeAreLeftOut) {
    SimulatedScreens screens;
    screens.plug("main", {0, 0, 1000, 800});
    screens.addPanel("main", ScreenEdge::left, 10);
    screens.addPanel("main", ScreenEdge::right, 20);
    screens.addPanel("main", ScreenEdge::top, 30);
    screens.addPanel("main", ScreenEdge::bottom, 40);
    screens.addPanel("main", ScreenEdge::bottom, 2);
    EXPECT_EQ(screens.visibleFrame("main"), (Rect{10, 30, 970, 728}));
    EXPECT_EQ(screens.screens()[0].visibleFrame, (Rect{10, 42, 970, 728}));
    screens.removePanels("main");
    EXPECT_EQ(screens.visibleFrame("main"), screens.frame("main"));
}

TEST(SimulatedScreens, thePrimaryScreenIsFirstAndTheOthersKeepTheirOrder) {
    SimulatedScreens screens;
    screens.plug("a", {0, 0, 100, 100});
    screens.plug("b", {100, 0, 200, 100});
    screens.plug("c", {300, 0, 300, 100});
    screens.makePrimary("c");
    screens.makePrimary("b");
    std::vector<double> widths;
    for (const PlatformScreen& screen : screens.screens()) {
        widths.push_back(screen.frame.width);
    }
    EXPECT_EQ(widths, (std::vector<double>{200, 100, 300}));
    EXPECT_EQ(screens.frame("a"), (Rect{-100, 0, 100, 100}));
    EXPECT_EQ(screens.frame("b"), (Rect{0, 0, 200, 100}));
}

TEST(SimulatedScreens, withoutThePrimaryScreenTheFirstOfTheOthersIsPrimary) {
    SimulatedScreens screens;
    screens.plug("a", {0, 0, 100, 100});
    screens.plug("b", {100, 50, 200, 100});
    screens.unplug("a");
    EXPECT_EQ(screens.frame("b"), (Rect{0, 0, 200, 100}));
    screens.plug("a", {0, 0, 100, 100});
    EXPECT_EQ(screens.frame("a"), (Rect{-100, -50, 100, 100}));
    screens.unplug("b");
    screens.unplug("a");
    EXPECT_TRUE(screens.screens().empty());
    EXPECT_EQ(screens.count(), 0U);
}

RC_GTEST_PROP(SimulatedScreens, theTwoSpacesConvertThereAndBack, (int x, int y)) {
    SimulatedScreens screens;
    const auto coordinate = [](int value) { return static_cast<double>(value % 20000); };
    screens.plug("only", {coordinate(x), coordinate(y), 1920, 1080});
    const Rect window{12, 34, 560, 780};
    RC_ASSERT(screens.toAccessibility(screens.toArrangement(window)) == window);
    RC_ASSERT(screens.frame("only") == (Rect{0, 0, 1920, 1080}));
}

}  // namespace
}  // namespace lumatile
