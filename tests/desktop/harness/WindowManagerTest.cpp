#include "tests/desktop/support/WindowManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::desktop {
namespace {

using Kind = TestWindow::Kind;

bool canGrab(const std::string& display, std::uint16_t modifiers, std::uint8_t key) {
    const XClient client(display);
    const XReply<xcb_generic_error_t> error(xcb_request_check(
        client.connection(), xcb_grab_key_checked(client.connection(), 0, client.root(), modifiers,
                                                  key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
    return !error;
}

constexpr std::uint16_t controlAlt = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;

class EveryWindowManager : public testing::TestWithParam<WindowManager::Kind> {};

TEST_P(EveryWindowManager, managesEveryKindOfWindowAndPlacesItExactly) {
    TestDesktop desktop(MonitorLayout::landscape(), GetParam());
    for (const Kind kind : {Kind::decorated, Kind::undecorated, Kind::clientSide, Kind::dialog}) {
        TestWindow::Options options;
        options.kind = kind;
        const auto window = desktop.openWindow(options);
        EXPECT_TRUE(window->isActive());
        for (const PixelRect& place :
             {PixelRect{100, 100, 700, 500}, PixelRect{33, 61, 611, 407}}) {
            EXPECT_NO_THROW(window->place(place)) << static_cast<int>(kind);
        }
    }
}

TEST_P(EveryWindowManager, tellsWhatWasAskedOfIt) {
    TestDesktop desktop(MonitorLayout::landscape(), GetParam());
    const auto window = desktop.openWindow({});
    desktop.observer().forget();
    window->place({50, 60, 500, 400});
    const auto heard = desktop.observer().messages(window->id(), "_NET_MOVERESIZE_WINDOW");
    ASSERT_EQ(heard.size(), 1U);
    EXPECT_EQ(heard[0].data[1], 50U);
    EXPECT_EQ(heard[0].data[2], 60U);
    EXPECT_FALSE(window->configurations().empty());
}

TEST_P(EveryWindowManager, leavesTheArrowsAloneWhereItsBindingsAreCleared) {
    const TestDesktop desktop(MonitorLayout::landscape(), GetParam());
    for (const std::uint8_t key : {KeyPosition::left, KeyPosition::right, KeyPosition::up,
                                   KeyPosition::down, KeyPosition::d, KeyPosition::tab}) {
        EXPECT_TRUE(canGrab(desktop.display(), controlAlt, key)) << int{key};
    }
}

TEST_P(EveryWindowManager, hasItsOwnBindingsWhereTheyAreWanted) {
    const TestDesktop desktop(MonitorLayout::landscape(), GetParam(), {.ownBindings = true});
    const bool takesTheArrows = GetParam() != WindowManager::Kind::kwin;
    for (const std::uint8_t key :
         {KeyPosition::left, KeyPosition::right, KeyPosition::up, KeyPosition::down}) {
        EXPECT_EQ(canGrab(desktop.display(), controlAlt, key), !takesTheArrows) << int{key};
    }
    EXPECT_EQ(canGrab(desktop.display(), controlAlt, KeyPosition::d),
              GetParam() != WindowManager::Kind::xfwm4);
}

TEST_P(EveryWindowManager, maximizesAndRestores) {
    TestDesktop desktop(MonitorLayout::landscape(), GetParam());
    for (const Kind kind : {Kind::decorated, Kind::clientSide}) {
        TestWindow::Options options;
        options.kind = kind;
        const auto window = desktop.openWindow(options);
        const std::vector<std::string> both{"_NET_WM_STATE_MAXIMIZED_VERT",
                                            "_NET_WM_STATE_MAXIMIZED_HORZ"};
        window->setState(both, true);
        EXPECT_TRUE(XClient::waitUntil([&] {
            return window->frame() == PixelRect{0, 0, 1920, 1080};
        })) << window->frame();
        window->setState(both, false);
    }
}

TEST_P(EveryWindowManager, canBeReplacedAfterACrash) {
    TestDesktop desktop(MonitorLayout::landscape(), GetParam());
    const auto window = desktop.openWindow({});
    desktop.windowManager().crash();
    const auto next = GetParam() == WindowManager::Kind::xfwm4 ? WindowManager::Kind::openbox
                                                               : WindowManager::Kind::xfwm4;
    desktop.startWindowManager(next, {});
    EXPECT_TRUE(XClient::waitUntil([&] { return window->isManaged(); }));
    window->activate();
    window->place({70, 80, 600, 400});
}

TEST_P(EveryWindowManager, followsMonitorsAndLeavesRoomForPanels) {
    TestDesktop desktop(MonitorLayout::landscapeAndPortrait(), GetParam());
    const auto panel = desktop.openPanel(0, 40);
    EXPECT_EQ(panel->frame(), (PixelRect{0, 1040, 1920, 40}));
    desktop.arrange(MonitorLayout::landscape());
    desktop.layPanel(*panel, 0, 40);
    EXPECT_EQ(panel->frame(), (PixelRect{0, 1040, 1920, 40}));
    const auto window = desktop.openWindow({});
    window->place({100, 100, 640, 480});
}

TEST_P(EveryWindowManager, followsMonitorsAlsoWhereTheRootStaysAsItIs) {
    const MonitorLayout above = MonitorLayout::landscapeAndPortrait();
    MonitorLayout below = above;
    below.monitors[0].y = 840;
    ASSERT_EQ(above.root(), below.root());
    TestDesktop desktop(above, GetParam());
    const auto window = desktop.openWindow({});
    for (const MonitorLayout& layout : {below, above, below}) {
        desktop.arrange(layout);
        const PixelRect& monitor = layout.primaryMonitor();
        window->place({monitor.x + 100, monitor.y + 100, 640, 480});
        const std::vector<std::string> maximized{"_NET_WM_STATE_MAXIMIZED_VERT",
                                                 "_NET_WM_STATE_MAXIMIZED_HORZ"};
        window->setState(maximized, true);
        EXPECT_TRUE(XClient::waitUntil([&] { return window->frame() == monitor; }))
            << window->frame() << " instead of " << monitor;
        window->setState(maximized, false);
    }
}

TEST_P(EveryWindowManager, runsRealPrograms) {
    TestDesktop desktop(MonitorLayout::landscape(), GetParam());
    const auto terminal = desktop.openProgram({"xterm", "-e", "sleep 1000"}, "XTerm");
    EXPECT_EQ(desktop.observer().activeWindow(), terminal.window);
    EXPECT_TRUE(outerFrame(desktop.observer(), terminal.window).has_value());
}

INSTANTIATE_TEST_SUITE_P(WindowManager, EveryWindowManager, testing::ValuesIn(WindowManager::kinds),
                         [](const auto& kind) { return toString(kind.param); });

}  // namespace
}  // namespace lumatile::desktop
