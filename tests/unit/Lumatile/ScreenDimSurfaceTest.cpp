#include "Lumatile/ScreenDimSurface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "platform/simulated/SimulatedDesktop.h"

namespace lumatile {
namespace {

class ScreenDimSurfaceTest : public testing::Test {
protected:
    ScreenDimSurfaceTest() {
        desk_.plug("main", {0, 0, 1920, 1080});
        desk_.plug("tall", {1920, 0, 1080, 1920});
        surface_.emplace(desk_.dimOverlays, desk_.runLoop);
        surface_->rebuild();
    }

    double opacity() const { return desk_.dimOverlays.opacity(); }
    const std::vector<double>& history() const { return desk_.dimOverlays.history(); }

    SimulatedDesktop desk_;
    std::optional<ScreenDimSurface> surface_;
};

TEST_F(ScreenDimSurfaceTest, coversEveryScreenWhole) {
    const auto screens = desk_.screens.screens();
    ASSERT_EQ(desk_.dimOverlays.frames().size(), 2U);
    EXPECT_EQ(desk_.dimOverlays.frames()[0], screens[0].frame);
    EXPECT_EQ(desk_.dimOverlays.frames()[1], screens[1].frame);
    EXPECT_EQ(opacity(), 0);
}

TEST_F(ScreenDimSurfaceTest, fadesInFourTenthsOfASecond) {
    surface_->setLevel(0.3);
    EXPECT_EQ(opacity(), 0) << "it fades, it does not jump";
    desk_.advance(0.2);
    EXPECT_NEAR(opacity(), 0.15, 0.02);
    desk_.advance(0.19);
    EXPECT_LT(opacity(), 0.3);
    desk_.advance(0.02);
    EXPECT_EQ(opacity(), 0.3);
    EXPECT_TRUE(std::is_sorted(history().begin(), history().end()));
    EXPECT_EQ(desk_.runLoop.timerCount(), 0U) << "nothing runs once it is there";
}

TEST_F(ScreenDimSurfaceTest, turnsRoundInTheMiddleOfAFade) {
    surface_->setLevel(1);
    desk_.advance(0.2);
    const double half = opacity();
    surface_->setLevel(0);
    desk_.advance(0.03);
    EXPECT_LT(opacity(), half);
    EXPECT_GT(opacity(), half * 0.8);
    desk_.advance(0.4);
    EXPECT_EQ(opacity(), 0);
}

TEST_F(ScreenDimSurfaceTest, theSameLevelAgainDoesNothing) {
    surface_->setLevel(0);
    desk_.advance(1);
    EXPECT_TRUE(history().empty());
    surface_->setLevel(0.3);
    desk_.advance(0.2);
    const std::size_t asked = history().size();
    surface_->setLevel(0.3);
    desk_.advance(0.21);
    EXPECT_EQ(opacity(), 0.3) << "and does not begin the fade anew";
    EXPECT_LE(history().size(), 2 * asked + 1);
}

TEST_F(ScreenDimSurfaceTest, aLevelThatLastsIsMadeSureOfWhileItIsDark) {
    surface_->setLevel(0.3);
    desk_.advance(1);
    desk_.dimOverlays.forgetHistory();
    for (int tick = 0; tick < 30; ++tick) {
        surface_->setLevel(0.3);
    }
    EXPECT_EQ(history(), (std::vector{0.3, 0.3})) << "now and then";
    surface_->setLevel(0);
    desk_.advance(1);
    desk_.dimOverlays.forgetHistory();
    for (int tick = 0; tick < 30; ++tick) {
        surface_->setLevel(0);
    }
    EXPECT_TRUE(history().empty()) << "there is nothing to keep";
}

TEST_F(ScreenDimSurfaceTest, levelsAreBroughtIntoRange) {
    const std::pair<double, double> cases[] = {{1.7, 1},
                                               {-0.2, 0},
                                               {std::numeric_limits<double>::infinity(), 1},
                                               {std::numeric_limits<double>::quiet_NaN(), 0}};
    for (const auto& [asked, became] : cases) {
        surface_->setLevel(0.5);
        desk_.advance(1);
        surface_->setLevel(asked);
        desk_.advance(1);
        EXPECT_EQ(opacity(), became) << asked;
    }
}

TEST_F(ScreenDimSurfaceTest, withoutScreensNothingIsSeen) {
    desk_.unplug("main");
    desk_.unplug("tall");
    surface_->rebuild();
    EXPECT_TRUE(desk_.dimOverlays.frames().empty());
    surface_->setLevel(1);
    desk_.advance(1);
    EXPECT_EQ(opacity(), 0);
}

TEST_F(ScreenDimSurfaceTest, isClearAfterARebuild) {
    surface_->setLevel(1);
    desk_.advance(1);
    surface_->rebuild();
    EXPECT_EQ(opacity(), 0);
    surface_->setLevel(1);
    desk_.advance(1);
    EXPECT_EQ(opacity(), 1);
}

TEST_F(ScreenDimSurfaceTest, isClearOnceItIsGone) {
    surface_->setLevel(1);
    desk_.advance(0.3);
    EXPECT_GT(opacity(), 0);
    surface_.reset();
    EXPECT_EQ(opacity(), 0);
    EXPECT_EQ(desk_.runLoop.timerCount(), 0U);
}

}  // namespace
}  // namespace lumatile
