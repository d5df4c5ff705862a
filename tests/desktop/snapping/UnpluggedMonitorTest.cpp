// A monitor goes while a window is on it. Where the window then is, is the window manager's affair;
// a shortcut snaps it on the screen that holds its centre, and does nothing where none does.

#include <gtest/gtest.h>

#include <memory>

#include "tests/desktop/support/SnapDesktop.h"

namespace lumatile::desktop {
namespace {

bool holdsCentre(const PixelRect& screen, const PixelRect& window) {
    const double x = window.x + window.width / 2.0;
    const double y = window.y + window.height / 2.0;
    return x >= screen.x && x < screen.right() && y >= screen.y && y < screen.bottom();
}

class UnpluggedMonitor : public OnEveryWindowManager {
protected:
    void SetUp() override {
        SnapDesktop::Setup setup;
        setup.windowManager = GetParam();
        setup.layout = MonitorLayout::landscapeAndPortrait();
        desktop_ = std::make_unique<SnapDesktop>(setup);
        window_ = desktop_->desktop().openWindow({});
        window_->place({2100, 400, 500, 600});
        desktop_->press("left");
        ASSERT_TRUE(reaches(*window_, PixelRect{1920, 0, 540, 1920}));
        ASSERT_TRUE(desktop_->settle(*window_));
    }

    void TearDown() override { EXPECT_EQ(desktop_->endProgram(), ""); }

    // A window manager that has taken over a new window has seen the monitor go before.
    void letTheWindowManagerNotice() {
        const auto later = desktop_->desktop().openWindow({});
        later->close();
        window_->activate();
    }

    // Some window managers bring the window back, some only after a while, and some put it where
    // there is no screen: what counts is where it is when the program looks.
    void expectSnapWhereItIs(std::string_view command, const PixelRect& screen,
                             const PixelRect& target) {
        ASSERT_TRUE(XClient::waitUntil([&] {
            desktop_->observer().forget();
            desktop_->press(command);
            return desktop_->settle(*window_) &&
                   (!holdsCentre(screen, window_->frame()) || window_->frame() == target);
        })) << window_->frame();
        if (!holdsCentre(screen, window_->frame())) {
            EXPECT_EQ(desktop_->observer().messages(window_->id(), "_NET_MOVERESIZE_WINDOW").size(),
                      0U);
            window_->place({screen.x + 100, screen.y + 100, 500, 400});
            desktop_->press(command);
        }
        EXPECT_TRUE(reaches(*window_, target));
    }

    std::unique_ptr<SnapDesktop> desktop_;
    std::unique_ptr<TestWindow> window_;
    const PixelRect landscape_{0, 0, 1920, 1080};
    const PixelRect portrait_{1920, 0, 1080, 1920};
};

TEST_P(UnpluggedMonitor, leavesAWindowThatASnapTakesWhereItIsOrNotAtAll) {
    desktop_->desktop().server().unplug(1);
    letTheWindowManagerNotice();
    expectSnapWhereItIs("left", landscape_, {0, 0, 960, 1080});
}

TEST_P(UnpluggedMonitor, withTheRootShrunkLeavesNoOtherPlaceThanTheOtherScreen) {
    desktop_->desktop().arrange(MonitorLayout::landscape());
    letTheWindowManagerNotice();
    expectSnapWhereItIs("right", landscape_, {960, 0, 960, 1080});
}

TEST_P(UnpluggedMonitor, comesBackAndIsUsedAgain) {
    desktop_->desktop().arrange(MonitorLayout::landscape());
    letTheWindowManagerNotice();
    desktop_->desktop().arrange(MonitorLayout::landscapeAndPortrait());
    letTheWindowManagerNotice();
    window_->place({2100, 400, 500, 600});
    desktop_->press("leftThird");
    EXPECT_TRUE(reaches(*window_, PixelRect{1920, 0, 1080, 640}));
}

TEST_P(UnpluggedMonitor, thePrimaryGoesAndTheOtherCounts) {
    window_->place({2100, 400, 500, 600});
    desktop_->desktop().server().unplug(0);
    letTheWindowManagerNotice();
    expectSnapWhereItIs("right", portrait_, {2460, 0, 540, 1920});
}

INSTANTIATE_TEST_SUITE_P(Desktop, UnpluggedMonitor, testing::ValuesIn(WindowManager::kinds),
                         nameOf);

}  // namespace
}  // namespace lumatile::desktop
