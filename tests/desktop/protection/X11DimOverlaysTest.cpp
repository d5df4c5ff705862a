#include "platform/x11/X11DimOverlays.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tests/desktop/protection/DimDesk.h"
#include "tests/desktop/protection/GammaClient.h"
#include "tests/desktop/support/Compositor.h"
#include "tests/desktop/support/MonitorLayout.h"
#include "tests/desktop/support/PrivateServer.h"
#include "tests/desktop/support/PrivateSession.h"
#include "tests/desktop/support/ReplyWaits.h"

namespace lumatile::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAreArray;

constexpr std::uint32_t color = 0xc8965a;

/// A desktop with a compositor and no window manager.
class CompositedTest : public testing::Test {
protected:
    void start(const MonitorLayout& layout,
               const std::vector<std::string>& compositorOptions = {}) {
        server_ = std::make_unique<PrivateServer>(layout);
        session_ = std::make_unique<PrivateSession>(server_->display());
        backdrop_ = std::make_unique<Backdrop>(server_->display(), color, layout.root());
        compositor_ = std::make_unique<Compositor>(*session_, compositorOptions);
        desk_ = std::make_unique<DimDesk>(server_->display());
        desk_->overlays().rebuild();
    }

    void expectShown(int x, int y, double opacity) {
        desk_->expectShown(x, y, ScreenColor::of(color).behindBlack(opacity));
    }

    std::vector<PixelRect> areas() {
        std::vector<PixelRect> result;
        for (const FoundOverlay& overlay : desk_->found()) {
            result.push_back(overlay.area);
        }
        return result;
    }

    std::unique_ptr<PrivateServer> server_;
    std::unique_ptr<PrivateSession> session_;
    std::unique_ptr<Backdrop> backdrop_;
    std::unique_ptr<Compositor> compositor_;
    std::unique_ptr<DimDesk> desk_;
};

TEST_F(CompositedTest, thereIsOneForEachMonitorOverAllOfIt) {
    start(MonitorLayout::portraitAndPrimaryLandscape());
    desk_->catchUp();
    EXPECT_THAT(areas(),
                UnorderedElementsAreArray(MonitorLayout::portraitAndPrimaryLandscape().monitors));
    for (const FoundOverlay& overlay : desk_->found()) {
        EXPECT_TRUE(overlay.isMapped);
        EXPECT_FALSE(overlay.isManaged);
    }
    // Made anew they are as many.
    desk_->overlays().rebuild();
    desk_->catchUp();
    EXPECT_THAT(areas(),
                UnorderedElementsAreArray(MonitorLayout::portraitAndPrimaryLandscape().monitors));
}

TEST_F(CompositedTest, everyLevelIsWhatTheScreensShow) {
    const MonitorLayout layout = MonitorLayout::portraitAndPrimaryLandscape();
    start(layout);
    for (const double opacity : {0.15, 0.3, 1.0, 0.0, 0.3, 0.0}) {
        SCOPED_TRACE(opacity);
        desk_->overlays().setOpacity(opacity);
        for (const PixelRect& monitor : layout.monitors) {
            expectShown(monitor.x, monitor.y, opacity);
            expectShown(monitor.right() - 1, monitor.bottom() - 1, opacity);
            expectShown(monitor.x + monitor.width / 2, monitor.y + monitor.height / 2, opacity);
        }
        // No monitor is there: above the lower one.
        expectShown(2000, 100, 0);
    }
    EXPECT_THAT(desk_->log().lines(), IsEmpty());
}

TEST_F(CompositedTest, theHintIsTheExactFraction) {
    start(MonitorLayout::landscapeAndPortrait());
    for (const double opacity : {0.0, 0.15, 0.3, 0.5, 1.0, 0.000001, 1.7, -0.2, std::nan("")}) {
        SCOPED_TRACE(opacity);
        desk_->overlays().setOpacity(opacity);
        desk_->catchUp();
        const double level = opacity > 0 ? std::min(opacity, 1.0) : 0;
        const auto expected = static_cast<std::uint32_t>(std::floor(level * 4294967295.0 + 0.5));
        ASSERT_THAT(desk_->found(), SizeIs(2));
        for (const FoundOverlay& overlay : desk_->found()) {
            EXPECT_THAT(desk_->client().cardinals(overlay.window, "_NET_WM_WINDOW_OPACITY"),
                        ElementsAre(expected));
        }
    }
}

TEST_F(CompositedTest, theGammaRampsAreLeftAlone) {
    start(MonitorLayout::landscape());
    GammaClient gamma(server_->display());
    const auto before = gamma.ramp(gamma.controller(0));
    for (const double opacity : {0.3, 1.0, 0.0}) {
        desk_->overlays().setOpacity(opacity);
        desk_->catchUp();
        EXPECT_EQ(gamma.ramp(gamma.controller(0)), before);
        EXPECT_THAT(gamma.cardinals(gamma.root(), "_LUMATILE_GAMMA_RAMPS"), IsEmpty());
    }
}

TEST_F(CompositedTest, aLevelCostsNoRoundTrip) {
    start(MonitorLayout::landscapeAndPortrait());
    desk_->overlays().setOpacity(0.1);
    desk_->catchUp();
    const ReplyWaits waits(desk_->connection().get());
    for (const double opacity : {0.15, 0.3, 0.3, 0.0, 1.0, 0.0}) {
        desk_->overlays().setOpacity(opacity);
    }
    EXPECT_EQ(waits.replies(), 0U);
    // The count is one that can be more.
    desk_->connection().synchronize();
    EXPECT_EQ(waits.replies(), 1U);
}

TEST_F(CompositedTest, aWindowMappedLaterIsCoveredAtTheNextLevel) {
    start(MonitorLayout::landscape());
    desk_->overlays().setOpacity(0.3);
    expectShown(500, 500, 0.3);
    const Backdrop popup(server_->display(), color, {400, 400, 200, 200});
    expectShown(500, 500, 0);
    EXPECT_FALSE(desk_->areAbove(popup.id()));
    desk_->overlays().setOpacity(0.3);
    expectShown(500, 500, 0.3);
    EXPECT_TRUE(desk_->areAbove(popup.id()));
}

TEST_F(CompositedTest, clearOnesDoNotComeToTheFront) {
    start(MonitorLayout::landscape());
    const Backdrop popup(server_->display(), color, {400, 400, 200, 200});
    desk_->overlays().setOpacity(0);
    desk_->catchUp();
    EXPECT_FALSE(desk_->areAbove(popup.id()));
}

TEST_F(CompositedTest, theyStayWhereTheyAreWhenMonitorsComeAndGo) {
    const MonitorLayout layout = MonitorLayout::landscapeAndPortrait();
    start(layout);
    desk_->overlays().setOpacity(0.3);
    expectShown(2000, 1500, 0.3);
    server_->unplug(1);
    desk_->catchUp();
    desk_->overlays().setOpacity(0.5);
    expectShown(100, 100, 0.5);
    EXPECT_THAT(areas(), UnorderedElementsAreArray(layout.monitors));
    server_->arrange(layout);
    desk_->catchUp();
    desk_->overlays().setOpacity(0.15);
    expectShown(100, 100, 0.15);
    expectShown(2000, 1500, 0.15);
    EXPECT_THAT(areas(), UnorderedElementsAreArray(layout.monitors));
    desk_->overlays().setOpacity(0);
    expectShown(2000, 1500, 0);
}

TEST_F(CompositedTest, madeAnewTheyFollowTheMonitors) {
    start(MonitorLayout::landscapeAndPortrait());
    server_->unplug(1);
    desk_->overlays().rebuild();
    desk_->catchUp();
    EXPECT_THAT(areas(), ElementsAre(PixelRect{0, 0, 1920, 1080}));
}

TEST_F(CompositedTest, noShadowFallsOnTheNeighbouringMonitor) {
    start(MonitorLayout::landscapeAndPortrait(), {"--shadow"});
    // What casts a shadow here: any other window.
    const Backdrop popup(server_->display(), color, {400, 400, 200, 200});
    EXPECT_TRUE(desk_->runUntil([&] {
        return !desk_->colorAt(603, 500).isNear(ScreenColor::of(color), DimDesk::tolerance);
    }));
    desk_->overlays().setOpacity(0.3);
    expectShown(1000, 1000, 0.3);
    constexpr int reach = 30;  // More than a shadow's radius and offset.
    for (int x = 1920 - reach; x < 1920 + reach && !HasFailure(); ++x) {
        expectShown(x, 500, 0.3);
    }
}

TEST_F(CompositedTest, theEndTakesThemAway) {
    start(MonitorLayout::landscapeAndPortrait());
    desk_->overlays().setOpacity(0.3);
    expectShown(100, 100, 0.3);
    desk_->closeOverlays();
    desk_->catchUp();
    EXPECT_THAT(desk_->found(), IsEmpty());
    expectShown(100, 100, 0);
}

TEST_F(CompositedTest, aLostServerIsNoMatter) {
    start(MonitorLayout::landscapeAndPortrait());
    desk_->overlays().setOpacity(0.3);
    desk_->catchUp();
    desk_->abandon();
    EXPECT_TRUE(desk_->connection().isLost());
    expectShown(100, 100, 0);
}

TEST_F(CompositedTest, whatHappensAfterTheServerIsLostDoesNothing) {
    start(MonitorLayout::landscape());
    desk_->overlays().setOpacity(0.3);
    desk_->catchUp();
    backdrop_.reset();
    compositor_.reset();
    server_->stop();
    desk_->overlays().setOpacity(0.5);
    desk_->overlays().rebuild();
    desk_->overlays().setOpacity(0.5);
    EXPECT_TRUE(desk_->connection().isLost());
    EXPECT_THAT(desk_->log().lines(), IsEmpty());
}

}  // namespace
}  // namespace lumatile::desktop
