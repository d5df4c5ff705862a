#include "tests/desktop/support/WindowManagerAnswer.h"
#include "tests/desktop/x11/X11DesktopTest.h"

namespace lumatile::desktop {
namespace {

/// The parameter is the window manager that comes second.
class X11ReplacedWindowManager : public X11DesktopTest {};

TEST_P(X11ReplacedWindowManager, everythingWorksAgainWithoutRestart) {
    TestDesktop desktop(MonitorLayout::landscape(), WindowManager::Kind::openbox);
    X11Adapter adapter(desktop.display());
    EXPECT_TRUE(adapter.platform.isTrusted(false));
    const auto window = desktop.openWindow({});
    AXWindow target = adapter.window(window->id());
    const AXElementKey key = target.key();
    target.setFrame({300, 200, 700, 500});
    EXPECT_EQ(window->frame(), (PixelRect{300, 200, 700, 500}));

    for (const bool crash : {true, false}) {
        if (crash) {
            desktop.windowManager().crash();
        } else {
            desktop.windowManager().stop();
        }
        ASSERT_TRUE(XClient::waitUntil([&] {
            adapter.connection->synchronize();
            return !adapter.platform.isTrusted(false);
        }));
        EXPECT_EQ(vainSecondsFor([&] {
                      target.setFrame({0, 0, 960, 1080});
                  }),
                  0)
            << "nobody is there to wait for";

        desktop.startWindowManager(GetParam(), {});
        ASSERT_TRUE(XClient::waitUntil([&] { return window->isManaged(); }));
        waitForWindowManager(*window);
        adapter.connection->synchronize();
        EXPECT_TRUE(adapter.platform.isTrusted(false));
        EXPECT_TRUE(target.isWindow()) << "the same window, by the same handle";
        EXPECT_EQ(AXElementKey{adapter.element(window->id())}, key);

        // A window manager that has just started may still be giving the window its frame.
        ASSERT_TRUE(XClient::waitUntil([&] {
            adapter.connection->synchronize();
            target.setFrame({300, 200, 700, 500});
            return target.frame() == Rect{300, 200, 700, 500};
        }));
        const Rect rect{0, 0, 960, 1080};
        target.setFrame(rect);
        EXPECT_EQ(rectOf(window->frame()), rect);
        EXPECT_EQ(target.frame(), rect);
        window->activate();
        adapter.connection->synchronize();
        ASSERT_TRUE(adapter.bridge.focusedWindow());
        EXPECT_EQ(adapter.bridge.focusedWindow()->key(), key);
        const std::shared_ptr<AXWindow> found = adapter.bridge.windowAt({400, 3});
        ASSERT_TRUE(found) << "the new frame is known";
        EXPECT_EQ(found->key(), key);
    }
}

TEST_P(X11ReplacedWindowManager, withoutOneNothingIsTrustedAndWritesFailQuickly) {
    TestDesktop desktop(MonitorLayout::landscape());
    X11Adapter adapter(desktop.display());
    EXPECT_FALSE(adapter.platform.isTrusted(false));
    EXPECT_FALSE(adapter.platform.isTrusted(true));
    EXPECT_EQ(adapter.platform.trustObstacle(), TrustObstacle::noWindowManager);
    EXPECT_FALSE(adapter.platform.isPermissionPromptOnScreen());
    EXPECT_EQ(adapter.bridge.focusedWindow(), nullptr);
    EXPECT_TRUE(adapter.workspace.runningApplications().empty());
    desktop.startWindowManager(GetParam(), {});
    adapter.connection->synchronize();
    EXPECT_TRUE(adapter.platform.isTrusted(false));
}

TEST_P(X11ReplacedWindowManager, aReusedWindowIdIsAnotherWindow) {
    TestDesktop desktop(MonitorLayout::landscape(), GetParam());
    X11Adapter adapter(desktop.display());
    XClient client(desktop.display());
    const xcb_window_t id = xcb_generate_id(client.connection());
    const auto openIt = [&] {
        xcb_create_window(client.connection(), XCB_COPY_FROM_PARENT, id, client.root(), 100, 100,
                          400, 300, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0,
                          nullptr);
        xcb_map_window(client.connection(), id);
        client.roundTrip();
        return XClient::waitUntil([&] {
            adapter.connection->synchronize();
            return adapter.element(id) != nullptr;
        });
    };
    ASSERT_TRUE(openIt());
    const AXWindow first = adapter.window(id);
    ASSERT_TRUE(first.isWindow());
    xcb_destroy_window(client.connection(), id);
    // The window manager lists the first one until it has been told; the adapter is told all at
    // once.
    ASSERT_TRUE(XClient::waitUntil([&] {
        const auto listed = client.cardinals(client.root(), "_NET_CLIENT_LIST");
        return std::find(listed.begin(), listed.end(), id) == listed.end();
    }));
    ASSERT_TRUE(openIt());
    const AXWindow second = adapter.window(id);
    EXPECT_FALSE(first.isWindow());
    EXPECT_TRUE(second.isWindow());
    EXPECT_FALSE(first.key() == second.key());
    EXPECT_EQ(first.frame(), std::nullopt);
}

TEST_P(X11ReplacedWindowManager, serverThatGoesAwayIsNoCrash) {
    TestDesktop desktop(MonitorLayout::landscape(), GetParam());
    X11Adapter adapter(desktop.display());
    const auto window = desktop.openWindow({});
    AXWindow target = adapter.window(window->id());
    ASSERT_TRUE(target.frame());
    desktop.server().stop();
    target.setFrame({0, 0, 100, 100});
    adapter.connection->synchronize();
    EXPECT_TRUE(adapter.connection->isLost());
    EXPECT_FALSE(adapter.platform.isTrusted(false));
    EXPECT_FALSE(adapter.platform.write(target.element(), AttributeName::size, Size{300, 300}));
    EXPECT_EQ(adapter.platform.elementAtPoint({10, 10}), std::nullopt);
}

TEST(X11Trust, onlyAWindowManagerThatPlacesWindowsCounts) {
    TestDesktop desktop(MonitorLayout::landscape());
    X11Adapter adapter(desktop.display());
    EXPECT_EQ(adapter.platform.trustObstacle(), TrustObstacle::noWindowManager);
    XClient manager(desktop.display());
    const xcb_window_t check = xcb_generate_id(manager.connection());
    xcb_create_window(manager.connection(), XCB_COPY_FROM_PARENT, check, manager.root(), -1, -1, 1,
                      1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    manager.setCardinals(check, "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, {check});
    manager.setCardinals(manager.root(), "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, {check});
    manager.roundTrip();
    const auto isTrusted = [&] {
        adapter.connection->synchronize();
        return adapter.platform.isTrusted(false);
    };
    EXPECT_FALSE(isTrusted()) << "it says nothing about what it supports";
    EXPECT_EQ(adapter.platform.trustObstacle(), TrustObstacle::windowManagerRefuses);
    manager.setCardinals(manager.root(), "_NET_SUPPORTED", XCB_ATOM_ATOM,
                         {manager.atom("_NET_ACTIVE_WINDOW"), manager.atom("_NET_WM_STATE")});
    manager.roundTrip();
    EXPECT_FALSE(isTrusted());
    manager.setCardinals(
        manager.root(), "_NET_SUPPORTED", XCB_ATOM_ATOM,
        {manager.atom("_NET_ACTIVE_WINDOW"), manager.atom("_NET_MOVERESIZE_WINDOW")});
    manager.roundTrip();
    EXPECT_TRUE(isTrusted());
    xcb_destroy_window(manager.connection(), check);
    manager.roundTrip();
    EXPECT_FALSE(isTrusted()) << "what a dead one left behind does not count";
    EXPECT_EQ(adapter.platform.trustObstacle(), TrustObstacle::noWindowManager);
    adapter.platform.noteGuestServer();
    EXPECT_EQ(adapter.platform.trustObstacle(), TrustObstacle::otherDisplaySystem);
}

INSTANTIATE_TEST_SUITE_P(Every, X11ReplacedWindowManager, testing::ValuesIn(WindowManager::kinds),
                         nameOf);

}  // namespace
}  // namespace lumatile::desktop
