// A monitor goes while a window is on it, on every session. Where the window then is, is the
// desktop's affair; a shortcut snaps it on the screen that holds its centre, and does nothing where
// none does.

#include <gtest/gtest.h>

#include <memory>

#include "tests/desktop/support/session/SharedDesk.h"

namespace lumatile::desktop {
namespace {

bool holdsCentre(const PixelRect& screen, const PixelRect& window) {
    const double x = window.x + window.width / 2.0;
    const double y = window.y + window.height / 2.0;
    return x >= screen.x && x < screen.right() && y >= screen.y && y < screen.bottom();
}

class UnpluggedMonitor : public OnSharedSession {
protected:
    SessionDesk::Setup setup() const override {
        SessionDesk::Setup setup;
        setup.layout = MonitorLayout::landscapeAndPortrait();
        return setup;
    }

    void SetUp() override {
        OnSharedSession::SetUp();
        desk().arrange(MonitorLayout::landscapeAndPortrait());
        window_ = open();
        window_->place({2100, 400, 500, 600});
        desk().press("left");
        ASSERT_TRUE(desk().reaches(*window_, {1920, 0, 540, 1920}));
        ASSERT_TRUE(desk().settle(*window_));
    }

    void TearDown() override {
        window_.reset();
        OnSharedSession::TearDown();
    }

    std::unique_ptr<SessionWindow> open() {
        return desk().open(GetParam().windowKinds.front(), {200, 150, 640, 400});
    }

    // A desktop that has taken over a new window has seen the monitor go before.
    void letTheDesktopNotice() {
        open();
        window_->activate();
    }

    // Some desktops bring the window back, some only after a while, and some put it where there is
    // no screen: what counts is where it is when the program looks.
    void expectSnapWhereItIs(std::string_view command, const PixelRect& screen,
                             const PixelRect& target) {
        ASSERT_TRUE(desk().waitUntil([&] {
            desk().forget();
            desk().press(command);
            return desk().settle(*window_) &&
                   (!holdsCentre(screen, window_->frame()) || window_->frame() == target);
        })) << window_->frame();
        if (!holdsCentre(screen, window_->frame())) {
            EXPECT_EQ(window_->timesAsked(), 0U);
            window_->place({screen.x + 100, screen.y + 100, 500, 400});
            desk().press(command);
        }
        EXPECT_TRUE(desk().reaches(*window_, target));
    }

    std::unique_ptr<SessionWindow> window_;
    const PixelRect landscape_{0, 0, 1920, 1080};
    const PixelRect portrait_{1920, 0, 1080, 1920};
};

TEST_P(UnpluggedMonitor, leavesAWindowThatASnapTakesWhereItIsOrNotAtAll) {
    desk().unplug(1);
    letTheDesktopNotice();
    expectSnapWhereItIs("left", landscape_, {0, 0, 960, 1080});
}

TEST_P(UnpluggedMonitor, withTheDesktopShrunkLeavesNoOtherPlaceThanTheOtherScreen) {
    desk().arrange(MonitorLayout::landscape());
    letTheDesktopNotice();
    expectSnapWhereItIs("right", landscape_, {960, 0, 960, 1080});
}

TEST_P(UnpluggedMonitor, comesBackAndIsUsedAgain) {
    desk().arrange(MonitorLayout::landscape());
    letTheDesktopNotice();
    desk().arrange(MonitorLayout::landscapeAndPortrait());
    letTheDesktopNotice();
    window_->place({2100, 400, 500, 600});
    desk().press("leftThird");
    EXPECT_TRUE(desk().reaches(*window_, {1920, 0, 1080, 640}));
}

TEST_P(UnpluggedMonitor, thePrimaryGoesAndTheOtherCounts) {
    window_->place({2100, 400, 500, 600});
    desk().unplug(0);
    letTheDesktopNotice();
    expectSnapWhereItIs("right", portrait_, {2460, 0, 540, 1920});
}

INSTANTIATE_TEST_SUITE_P(Desktop, UnpluggedMonitor, testing::ValuesIn(sessionKinds()),
                         nameOfSession);

}  // namespace
}  // namespace lumatile::desktop
