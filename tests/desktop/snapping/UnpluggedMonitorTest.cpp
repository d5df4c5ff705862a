// A monitor goes while a window is on it. Where the window then is, is the window manager's affair;
// a shortcut snaps it on the screen that holds its centre, and does nothing where none does.

#include <gtest/gtest.h>

#include <memory>

#include "tests/desktop/snapping/SnapDesktop.h"

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
    }

    void TearDown() override { EXPECT_EQ(desktop_->endProgram(), ""); }

    // A window manager that has taken over a new window has seen the monitor go before.
    void letTheWindowManagerNotice() {
        const auto later = desktop_->desktop().openWindow({});
        later->close();
        window_->activate();
    }

    std::unique_ptr<SnapDesktop> desktop_;
    std::unique_ptr<TestWindow> window_;
    const PixelRect remaining_{0, 0, 1920, 1080};
};

TEST_P(UnpluggedMonitor, leavesAWindowThatASnapTakesWhereItIsOrNotAtAll) {
    desktop_->desktop().server().unplug(1);
    letTheWindowManagerNotice();
    desktop_->observer().forget();
    // Some window managers bring the window back only after a while: what counts is where it is
    // when the program looks.
    const PixelRect left{0, 0, 960, 1080};
    const bool decided = XClient::waitUntil([&] {
        desktop_->press("left");
        if (!desktop_->settle(*window_)) {
            return false;
        }
        return holdsCentre(remaining_, window_->frame()) ? window_->frame() == left : true;
    });
    ASSERT_TRUE(decided) << window_->frame();
    if (!holdsCentre(remaining_, window_->frame())) {
        EXPECT_TRUE(desktop_->observer().messages(window_->id(), "_NET_MOVERESIZE_WINDOW").empty());
        // Put on the screen that is left, it snaps again.
        window_->place({100, 100, 500, 400});
        desktop_->press("left");
    }
    EXPECT_TRUE(reaches(*window_, left));
}

TEST_P(UnpluggedMonitor, withTheRootShrunkBringsTheWindowBackWhereItSnaps) {
    desktop_->desktop().arrange(MonitorLayout::landscape());
    letTheWindowManagerNotice();
    const PixelRect right{960, 0, 960, 1080};
    EXPECT_TRUE(XClient::waitUntil([&] {
        if (!holdsCentre(remaining_, window_->frame())) {
            window_->place({100, 100, 500, 400});
        }
        desktop_->press("right");
        return desktop_->settle(*window_) && window_->frame() == right;
    })) << window_->frame();
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
    if (holdsCentre({1920, 0, 1080, 1920}, window_->frame())) {
        desktop_->press("right");
        EXPECT_TRUE(reaches(*window_, PixelRect{2460, 0, 540, 1920}));
    } else {
        ADD_FAILURE() << "the window manager moved it to " << window_->frame();
    }
}

INSTANTIATE_TEST_SUITE_P(Desktop, UnpluggedMonitor, testing::ValuesIn(WindowManager::kinds),
                         nameOf);

}  // namespace
}  // namespace lumatile::desktop
