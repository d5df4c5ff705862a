#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

#include "tests/desktop/protection/DimDesk.h"
#include "tests/desktop/protection/GammaClient.h"
#include "tests/desktop/support/Compositor.h"
#include "tests/desktop/support/MonitorLayout.h"
#include "tests/desktop/support/PrivateServer.h"
#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::desktop {
namespace {

using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;
using Ramp = std::vector<std::uint16_t>;

constexpr std::uint32_t color = 0xc8965a;

/// A desktop without a compositor at first, so that overlays would be solid black.
class GammaDimmingTest : public testing::Test {
protected:
    GammaDimmingTest()
        : server_(MonitorLayout::landscapeAndPortrait()),
          session_(server_.display()),
          gamma_(server_.display()),
          backdrop_(server_.display(), color, server_.layout().root()) {
        gamma_.set(gamma_.controller(0), gamma_.curved(gamma_.controller(0)));
        gamma_.set(gamma_.controller(1), gamma_.warm(gamma_.controller(1)));
        originals_ = ramps();
        desk_ = std::make_unique<DimDesk>(server_.display());
    }

    std::vector<Ramp> ramps() {
        return {gamma_.ramp(gamma_.controller(0)), gamma_.ramp(gamma_.controller(1))};
    }

    std::vector<Ramp> dimmed(double opacity) const {
        return {GammaClient::dimmed(originals_[0], opacity),
                GammaClient::dimmed(originals_[1], opacity)};
    }

    bool areMapped(bool mapped) {
        const auto overlays = desk_->found();
        return std::all_of(
                   overlays.begin(), overlays.end(),
                   [&](const FoundOverlay& overlay) { return overlay.isMapped == mapped; }) &&
               overlays.size() == 2;
    }

    static ScreenColor plain() { return ScreenColor::of(color); }

    PrivateServer server_;
    PrivateSession session_;
    GammaClient gamma_;
    Backdrop backdrop_;
    std::vector<Ramp> originals_;
    std::unique_ptr<DimDesk> desk_;
};

TEST_F(GammaDimmingTest, withoutACompositorTheRampsTakeTheLevelAndNoWindowIsShown) {
    desk_->overlays().rebuild();
    desk_->catchUp();
    EXPECT_EQ(ramps(), originals_);
    for (const double opacity : {0.15, 0.3, 1.0, 0.3}) {
        SCOPED_TRACE(opacity);
        desk_->overlays().setOpacity(opacity);
        desk_->catchUp();
        EXPECT_EQ(ramps(), dimmed(opacity));
        EXPECT_TRUE(areMapped(false));
        EXPECT_EQ(desk_->colorAt(100, 100), plain());
    }
    desk_->overlays().setOpacity(0);
    desk_->catchUp();
    EXPECT_EQ(ramps(), originals_);
    EXPECT_THAT(desk_->log().lines(), IsEmpty());
}

TEST_F(GammaDimmingTest, levelsBeyondTheEndsAreTheEnds) {
    desk_->overlays().rebuild();
    desk_->overlays().setOpacity(1.7);
    desk_->catchUp();
    EXPECT_EQ(ramps(), dimmed(1));
    desk_->overlays().setOpacity(-0.2);
    desk_->catchUp();
    EXPECT_EQ(ramps(), originals_);
    desk_->overlays().setOpacity(0.3);
    desk_->overlays().setOpacity(std::nan(""));
    desk_->catchUp();
    EXPECT_EQ(ramps(), originals_);
}

TEST_F(GammaDimmingTest, withoutOverlaysNothingIsDimmed) {
    desk_->overlays().setOpacity(0.3);
    desk_->catchUp();
    EXPECT_EQ(ramps(), originals_);
    EXPECT_THAT(desk_->found(), IsEmpty());
}

TEST_F(GammaDimmingTest, makingThemAnewClears) {
    desk_->overlays().rebuild();
    desk_->overlays().setOpacity(0.3);
    desk_->overlays().rebuild();
    desk_->catchUp();
    EXPECT_EQ(ramps(), originals_);
    EXPECT_TRUE(areMapped(false));
}

TEST_F(GammaDimmingTest, theEndRestoresTheRampsAndTakesTheWindowsAway) {
    desk_->overlays().rebuild();
    desk_->overlays().setOpacity(0.3);
    desk_->catchUp();
    EXPECT_THAT(desk_->found(), SizeIs(2));
    desk_->closeOverlays();
    desk_->catchUp();
    EXPECT_EQ(ramps(), originals_);
    EXPECT_THAT(desk_->found(), IsEmpty());
}

TEST_F(GammaDimmingTest, aCrashIsMadeGoodAtTheNextStart) {
    desk_->overlays().rebuild();
    desk_->overlays().setOpacity(0.3);
    desk_->abandon();
    EXPECT_EQ(ramps(), dimmed(0.3));
    DimDesk next(server_.display());
    next.catchUp();
    EXPECT_EQ(ramps(), originals_);
}

TEST_F(GammaDimmingTest, aCompositorThatComesTakesTheLevelOver) {
    desk_->overlays().rebuild();
    desk_->overlays().setOpacity(0.3);
    desk_->catchUp();
    EXPECT_EQ(ramps(), dimmed(0.3));
    const Compositor compositor(session_);
    EXPECT_TRUE(desk_->runUntil([&] { return ramps() == originals_ && areMapped(true); }));
    const ScreenColor expected = plain().behindBlack(0.3);
    desk_->expectShown(100, 100, expected);
    desk_->expectShown(2900, 1900, expected);
    EXPECT_THAT(gamma_.cardinals(gamma_.root(), "_LUMATILE_GAMMA_RAMPS"), IsEmpty());
    desk_->overlays().setOpacity(0);
    EXPECT_EQ(desk_->shownAt(100, 100, plain()), plain());
    EXPECT_EQ(ramps(), originals_);
}

TEST_F(GammaDimmingTest, theRampsTakeOverWhenTheCompositorGoes) {
    for (const bool crash : {false, true}) {
        SCOPED_TRACE(crash ? "crash" : "end");
        Compositor compositor(session_);
        desk_->overlays().rebuild();
        desk_->overlays().setOpacity(0.3);
        const ScreenColor expected = plain().behindBlack(0.3);
        desk_->expectShown(100, 100, expected);
        EXPECT_EQ(ramps(), originals_);
        if (crash) {
            compositor.crash();
        } else {
            compositor.stop();
        }
        EXPECT_TRUE(desk_->runUntil([&] { return ramps() == dimmed(0.3) && areMapped(false); }));
        EXPECT_EQ(desk_->shownAt(100, 100, plain()), plain());
        desk_->overlays().setOpacity(0);
        desk_->catchUp();
        EXPECT_EQ(ramps(), originals_);
    }
}

TEST_F(GammaDimmingTest, compositorsComeAndGoWhileTheLevelIsTheSame) {
    desk_->overlays().rebuild();
    desk_->overlays().setOpacity(0.5);
    for (int round = 0; round < 3; ++round) {
        Compositor compositor(session_);
        ASSERT_TRUE(desk_->runUntil([&] { return ramps() == originals_ && areMapped(true); }));
        compositor.stop();
        ASSERT_TRUE(desk_->runUntil([&] { return ramps() == dimmed(0.5) && areMapped(false); }));
    }
    desk_->overlays().setOpacity(0);
    desk_->catchUp();
    EXPECT_EQ(ramps(), originals_);
}

TEST_F(GammaDimmingTest, clearOverlaysDoNotTurnBlackWhenTheCompositorGoes) {
    Compositor compositor(session_);
    desk_->overlays().rebuild();
    desk_->overlays().setOpacity(0.3);
    const ScreenColor expected = plain().behindBlack(0.3);
    desk_->expectShown(100, 100, expected);
    desk_->overlays().setOpacity(0);
    EXPECT_EQ(desk_->shownAt(100, 100, plain()), plain());
    EXPECT_TRUE(areMapped(true));
    compositor.crash();
    // The overlays do not know yet, since nothing of theirs is run here.
    XClient& client = desk_->client();
    ASSERT_TRUE(XClient::waitUntil([&] {
        const XReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
            client.connection(),
            xcb_get_selection_owner(client.connection(), client.atom("_NET_WM_CM_S0")), nullptr));
        return owner && owner->owner == XCB_WINDOW_NONE;
    }));
    EXPECT_TRUE(areMapped(true));
    EXPECT_EQ(desk_->colorAt(100, 100), plain());
    EXPECT_EQ(desk_->colorAt(2900, 1900), plain());
}

TEST(X11DimOverlays, withNeitherCompositorNorRampsOneLineSaysSo) {
    const PrivateServer server(MonitorLayout::landscape(), PrivateServer::Kind::virtualFramebuffer,
                               {"RANDR"});
    const Backdrop backdrop(server.display(), color, server.layout().root());
    DimDesk desk(server.display());
    desk.overlays().rebuild();
    desk.overlays().setOpacity(0);
    EXPECT_THAT(desk.log().lines(), IsEmpty());
    for (const double opacity : {0.1, 0.3, 0.0, 1.0}) {
        desk.overlays().setOpacity(opacity);
        desk.catchUp();
        EXPECT_EQ(desk.colorAt(100, 100), ScreenColor::of(color));
    }
    EXPECT_THAT(desk.found(), ElementsAre(Field(&FoundOverlay::isMapped, false)));
    EXPECT_THAT(desk.log().lines(),
                ElementsAre("X11DimOverlays: the screens cannot be dimmed: there is no compositor, "
                            "and none of them has a gamma ramp"));
    EXPECT_FALSE(desk.connection().isLost());
}

TEST(X11DimOverlays, whereCompositorsCannotBeToldOfTheRampsAreTaken) {
    const PrivateServer server(MonitorLayout::landscape(), PrivateServer::Kind::dummyDriver,
                               {"XFIXES"});
    GammaClient gamma(server.display());
    const Ramp original = gamma.ramp(gamma.controller(0));
    DimDesk desk(server.display());
    desk.overlays().rebuild();
    desk.overlays().setOpacity(0.3);
    desk.catchUp();
    EXPECT_EQ(gamma.ramp(gamma.controller(0)), GammaClient::dimmed(original, 0.3));
    EXPECT_THAT(desk.found(), ElementsAre(Field(&FoundOverlay::isMapped, false)));
    EXPECT_THAT(desk.log().lines(), IsEmpty());
    EXPECT_FALSE(desk.connection().isLost());
}

TEST(X11DimOverlays, withoutAnyExtensionOneLineSaysSo) {
    // Without the second, compositors cannot be told of, and windows cannot let clicks through.
    const PrivateServer server(MonitorLayout::landscape(), PrivateServer::Kind::virtualFramebuffer,
                               {"RANDR", "XFIXES"});
    DimDesk desk(server.display());
    desk.overlays().rebuild();
    desk.overlays().setOpacity(0.3);
    desk.catchUp();
    EXPECT_THAT(desk.found(), ElementsAre(Field(&FoundOverlay::isMapped, false)));
    EXPECT_THAT(desk.log().lines(), SizeIs(1));
    EXPECT_FALSE(desk.connection().isLost());
}

}  // namespace
}  // namespace lumatile::desktop
