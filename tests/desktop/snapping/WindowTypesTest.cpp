// Which windows the shortcuts take.

#include <gtest/gtest.h>

#include "tests/desktop/support/SnapDesktop.h"

namespace lumatile::desktop {
namespace {

using Kind = TestWindow::Kind;

class WindowTypes : public OnEveryWindowManager {};

TEST_P(WindowTypes, panelsAndTheDesktopAreNeverSnapped) {
    SnapDesktop::Setup setup;
    setup.windowManager = GetParam();
    setup.panel = 0;
    SnapDesktop desktop(setup);
    TestWindow::Options options;
    options.kind = Kind::desktop;
    options.area = {0, 0, 1920, 1080};
    TestWindow background(desktop.desktop().display(), options);
    background.map();
    const PixelRect panelBefore = desktop.panel().frame();
    const PixelRect backgroundBefore = background.frame();
    desktop.observer().forget();
    for (TestWindow* window : {&background, &desktop.panel()}) {
        // Whether they take the focus is up to the window manager.
        desktop.observer().ask(window->id(), "_NET_ACTIVE_WINDOW", {2, XCB_CURRENT_TIME, 0});
        desktop.observer().roundTrip();
        desktop.press("left");
        desktop.press("leftThird");
        desktop.press("center");
    }
    const auto window = desktop.desktop().openWindow({});
    desktop.press("right");
    EXPECT_TRUE(reaches(*window, desktop.expected().area(defaultShortcut("right"), 0)));
    EXPECT_EQ(desktop.panel().frame(), panelBefore);
    EXPECT_EQ(background.frame(), backgroundBefore);
    for (const TestWindow* each : {&background, &desktop.panel()}) {
        EXPECT_EQ(desktop.observer().messages(each->id(), "_NET_MOVERESIZE_WINDOW").size(), 0U);
    }
    EXPECT_EQ(desktop.endProgram(), "");
}

TEST_P(WindowTypes, aWindowOfUnknownProcessSnaps) {
    SnapDesktop::Setup setup;
    setup.windowManager = GetParam();
    SnapDesktop desktop(setup);
    TestWindow::Options options;
    options.statesPid = false;
    const auto window = desktop.desktop().openWindow(options);
    desktop.press("right");
    EXPECT_TRUE(reaches(*window, desktop.expected().area(defaultShortcut("right"), 0)));
    EXPECT_EQ(desktop.endProgram(), "");
}

TEST_P(WindowTypes, theActiveWindowOfAProgramIsTheOneThatSnaps) {
    SnapDesktop::Setup setup;
    setup.windowManager = GetParam();
    SnapDesktop desktop(setup);
    // All of one process.
    const auto first = desktop.desktop().openWindow({});
    const auto second = desktop.desktop().openWindow({});
    first->place({100, 100, 500, 400});
    second->place({700, 100, 500, 400});
    first->activate();
    desktop.press("left");
    EXPECT_TRUE(reaches(*first, desktop.expected().area(defaultShortcut("left"), 0)));
    second->activate();
    desktop.press("right");
    EXPECT_TRUE(reaches(*second, desktop.expected().area(defaultShortcut("right"), 0)));
    EXPECT_EQ(first->frame(), desktop.expected().area(defaultShortcut("left"), 0));
    EXPECT_EQ(desktop.endProgram(), "");
}

TEST_P(WindowTypes, aWindowSnapsOnTheScreenToWhichItHasJustBeenMoved) {
    SnapDesktop::Setup setup;
    setup.windowManager = GetParam();
    setup.layout = MonitorLayout::landscapeAndPortrait();
    SnapDesktop desktop(setup);
    const auto window = desktop.desktop().openWindow({});
    for (int round = 0; round < 10; ++round) {
        for (const std::size_t monitor : {0U, 1U}) {
            const PixelRect screen = desktop.expected().visible(monitor);
            // The end of the last snap would take the window back.
            ASSERT_TRUE(desktop.settle(*window));
            window->place({screen.x + 150, screen.y + 120, 600, 400});
            desktop.press("bottomLeft");
            ASSERT_TRUE(
                reaches(*window, desktop.expected().area(defaultShortcut("bottomLeft"), monitor)))
                << "round " << round;
        }
    }
    EXPECT_EQ(desktop.endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, WindowTypes, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
