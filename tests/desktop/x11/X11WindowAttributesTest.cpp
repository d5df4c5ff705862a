#include <unistd.h>

#include <csignal>

#include "tests/desktop/support/WindowManagerAnswer.h"
#include "tests/desktop/x11/X11DesktopTest.h"

namespace lumatile::desktop {
namespace {

class X11WindowAttributes : public X11DesktopTest {
protected:
    std::vector<Element> windowsOf(Pid pid) {
        return AttributeReader::value<std::vector<Element>>(
                   adapter().platform, adapter().platform.applicationElement(pid),
                   AttributeName::windows)
            .value_or(std::vector<Element>());
    }

    std::optional<Element> elementOf(const Element& of, std::string_view attribute) {
        return AttributeReader::element(adapter().platform, of, attribute);
    }

    bool same(const std::optional<Element>& element, xcb_window_t window) {
        return element && AXElementKey{*element} == AXElementKey{adapter().element(window)};
    }

    /// A mapped window of this type; empty: it states none.
    std::unique_ptr<TestWindow> openTyped(const std::string& type, bool transient = false) {
        auto window = std::make_unique<TestWindow>(desktop().display(), TestWindow::Options{});
        if (!type.empty()) {
            window->setCardinals(window->id(), "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM,
                                 {window->atom("_NET_WM_WINDOW_TYPE_" + type)});
        }
        if (transient) {
            window->setCardinals(window->id(), "WM_TRANSIENT_FOR", XCB_ATOM_WINDOW,
                                 {window->root()});
        }
        window->map();
        adapter().connection->synchronize();
        return window;
    }
};

TEST_P(X11WindowAttributes, subroleFollowsTheType) {
    start();
    struct Case {
        std::string type;
        bool transient;
        std::string subrole;
    };
    for (const Case& expected :
         {Case{"", false, "AXStandardWindow"}, Case{"", true, "AXDialog"},
          Case{"NORMAL", false, "AXStandardWindow"}, Case{"NORMAL", true, "AXStandardWindow"},
          Case{"DIALOG", false, "AXDialog"}, Case{"UTILITY", false, "AXFloatingWindow"},
          Case{"TOOLBAR", false, "AXToolbar"}, Case{"SPLASH", false, "AXSplash"},
          Case{"DOCK", false, "AXDock"}, Case{"DESKTOP", false, "AXDesktop"}}) {
        const auto window = openTyped(expected.type, expected.transient);
        const Element element = adapter().element(window->id());
        ASSERT_TRUE(element) << expected.type;
        EXPECT_EQ(adapter().text(element, AttributeName::role), "AXWindow") << expected.type;
        EXPECT_EQ(adapter().text(element, AttributeName::subrole), expected.subrole)
            << expected.type;
        EXPECT_EQ(adapter().bridge.isSnappable(element), expected.subrole == "AXStandardWindow")
            << expected.type;
    }
}

TEST_P(X11WindowAttributes, unknownTypeBesideAKnownOneIsPassedOver) {
    start();
    TestWindow window(desktop().display(), {});
    window.setCardinals(
        window.id(), "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM,
        {window.atom("_SOME_DESKTOPS_OWN_TYPE"), window.atom("_NET_WM_WINDOW_TYPE_DIALOG")});
    window.map();
    adapter().connection->synchronize();
    EXPECT_EQ(adapter().text(adapter().element(window.id()), AttributeName::subrole), "AXDialog");
}

TEST_P(X11WindowAttributes, whatTheWindowManagerDoesNotManageIsNoWindow) {
    start();
    XClient client(desktop().display());
    const xcb_window_t window = xcb_generate_id(client.connection());
    const std::uint32_t overrideRedirect = 1;
    xcb_create_window(client.connection(), XCB_COPY_FROM_PARENT, window, client.root(), 900, 700,
                      200, 100, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
    xcb_map_window(client.connection(), window);
    client.roundTrip();
    const std::optional<Element> element = adapter().platform.elementAtPoint({950, 750});
    ASSERT_TRUE(element);
    EXPECT_EQ(adapter().text(*element, AttributeName::role), std::nullopt);
    EXPECT_EQ(adapter().platform.pid(*element), std::nullopt);
    EXPECT_FALSE(adapter().platform.write(*element, AttributeName::position, Point{1, 1}));
    EXPECT_EQ(adapter().bridge.windowAt({950, 750}), nullptr);
}

TEST_P(X11WindowAttributes, windowsComeTopmostFirst) {
    start();
    const auto first = open(Kind::decorated);
    const auto second = open(Kind::decorated);
    const auto third = open(Kind::dialog);
    first->activate();
    const auto topmostIs = [&](xcb_window_t window) {
        return XClient::waitUntil([&] {
            const auto listed = first->cardinals(first->root(), "_NET_CLIENT_LIST_STACKING");
            return !listed.empty() && listed.back() == window;
        });
    };
    // A dialog may stay above; the order among the others is what was made.
    if (!topmostIs(first->id())) {
        third->close();
    }
    adapter().connection->synchronize();
    const std::vector<Element> windows = windowsOf(getpid());
    const auto place = [&](xcb_window_t window) {
        const AXElementKey key{adapter().element(window)};
        return std::find_if(windows.begin(), windows.end(),
                            [&](const Element& element) { return AXElementKey{element} == key; });
    };
    ASSERT_NE(place(first->id()), windows.end());
    ASSERT_NE(place(second->id()), windows.end());
    EXPECT_LT(place(first->id()), place(second->id()));
}

TEST_P(X11WindowAttributes, separateReadsGiveEqualKeys) {
    start();
    const auto window = open(Kind::decorated);
    const auto other = open(Kind::decorated);
    const std::shared_ptr<AXWindow> focused = adapter().bridge.focusedWindow();
    ASSERT_TRUE(focused);
    const std::shared_ptr<AXWindow> again = adapter().bridge.windowOfApplication(getpid());
    ASSERT_TRUE(again);
    EXPECT_EQ(focused->key(), again->key());
    EXPECT_EQ(std::hash<AXElementKey>{}(focused->key()), std::hash<AXElementKey>{}(again->key()));
    EXPECT_EQ(focused->key(), AXElementKey{adapter().element(other->id())});
    EXPECT_FALSE(focused->key() == AXElementKey{adapter().element(window->id())});
}

TEST_P(X11WindowAttributes, focusFollowsTheActiveWindow) {
    start();
    const auto first = open(Kind::decorated);
    const auto second = open(Kind::decorated);
    first->activate();
    adapter().connection->synchronize();
    EXPECT_EQ(adapter().bridge.focusedWindow()->key(),
              AXElementKey{adapter().element(first->id())});
    second->activate();
    adapter().connection->synchronize();
    EXPECT_EQ(adapter().bridge.focusedWindow()->key(),
              AXElementKey{adapter().element(second->id())});
}

TEST_P(X11WindowAttributes, mainWindowIsTheTopmostOrdinaryOne) {
    start();
    auto program = desktop().openProgram({"xterm", "-class", "OtherTerm"}, "OtherTerm");
    const Element application = adapter().platform.applicationElement(program.process.pid());
    ASSERT_TRUE(same(elementOf(application, AttributeName::mainWindow), program.window));
    ASSERT_TRUE(same(elementOf(application, AttributeName::focusedWindow), program.window));
    const auto window = open(Kind::decorated);
    adapter().connection->synchronize();
    // Another application has the focus now.
    EXPECT_FALSE(elementOf(application, AttributeName::focusedWindow));
    EXPECT_TRUE(same(elementOf(application, AttributeName::mainWindow), program.window));
    EXPECT_EQ(adapter().bridge.windowOfApplication(program.process.pid())->key(),
              AXElementKey{adapter().element(program.window)});

    constexpr std::uint32_t iconic = 3;
    desktop().observer().ask(program.window, "WM_CHANGE_STATE", {iconic});
    ASSERT_TRUE(XClient::waitUntil([&] {
        adapter().connection->synchronize();
        return AttributeReader::boolean(adapter().platform, adapter().element(program.window),
                                        AttributeName::minimized) == true;
    }));
    EXPECT_FALSE(elementOf(application, AttributeName::mainWindow));
}

TEST_P(X11WindowAttributes, activeDesktopWindowIsNoFocusedWindow) {
    start();
    const auto ordinary = open(Kind::decorated);
    TestWindow::Options options;
    options.kind = Kind::desktop;
    options.area = {0, 0, 1920, 1080};
    TestWindow background(desktop().display(), options);
    background.map();
    // Window managers differ in whether such a window can become the active one; where it does, it
    // is nothing to place.
    background.ask(background.id(), "_NET_ACTIVE_WINDOW", {2, XCB_CURRENT_TIME, 0});
    // It gives the focus, and states the active window when it is told that the focus is there.
    waitForWindowManager(background);
    waitForWindowManager(background);
    if (!background.isActive()) {
        background.setCardinals(background.root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW,
                                {background.id()});
        background.roundTrip();
    }
    adapter().connection->synchronize();
    ASSERT_TRUE(adapter().mirror.active() == nullptr ||
                adapter().mirror.active()->id == background.id());
    const Element application = adapter().platform.applicationElement(getpid());
    EXPECT_FALSE(elementOf(application, AttributeName::focusedWindow));
    EXPECT_FALSE(elementOf(application, AttributeName::mainWindow));
    EXPECT_EQ(adapter().bridge.focusedWindow(), nullptr);
    EXPECT_EQ(adapter().bridge.windowOfApplication(getpid()), nullptr);
}

TEST_P(X11WindowAttributes, serverKnowsTheProcessOfAWindowThatStatesAWrongOne) {
    start();
    TestWindow window(desktop().display(), {});
    window.setCardinals(window.id(), "_NET_WM_PID", XCB_ATOM_CARDINAL, {1});
    window.mapActive();
    EXPECT_EQ(adapter().window(window.id()).pid(), Pid{getpid()});
    EXPECT_EQ(adapter().platform.pid(adapter().platform.applicationElement(1)), std::nullopt);

    TestWindow::Options silent;
    silent.statesPid = false;
    const auto stating = desktop().openWindow(silent);
    EXPECT_EQ(adapter().window(stating->id()).pid(), Pid{getpid()});
}

TEST_P(X11WindowAttributes, enhancedInterfaceIsAbsent) {
    start();
    const auto window = open(Kind::decorated);
    const Element application = adapter().platform.applicationElement(getpid());
    EXPECT_EQ(adapter().platform.read(application, AttributeName::enhancedUserInterface),
              std::nullopt);
    EXPECT_FALSE(adapter().platform.write(application, AttributeName::enhancedUserInterface,
                                          AttributeValue(true)));
}

TEST_P(X11WindowAttributes, applicationWithoutWindowsHasNoAttributes) {
    start();
    const Element application = adapter().platform.applicationElement(999999);
    for (const std::string_view attribute :
         {AttributeName::role, AttributeName::windows, AttributeName::focusedWindow,
          AttributeName::mainWindow}) {
        EXPECT_EQ(adapter().platform.read(application, attribute), std::nullopt) << attribute;
    }
    EXPECT_EQ(adapter().platform.pid(application), std::nullopt);
    EXPECT_EQ(adapter().platform.isSettable(application, AttributeName::position), std::nullopt);
}

TEST_P(X11WindowAttributes, windowManagerThatForbidsMovesIsBelieved) {
    start();
    const auto window = open(Kind::decorated);
    AXWindow target = adapter().window(window->id());
    EXPECT_EQ(adapter().platform.isSettable(target.element(), AttributeName::position), true);
    window->setCardinals(window->id(), "_NET_WM_ALLOWED_ACTIONS", XCB_ATOM_ATOM,
                         {window->atom("_NET_WM_ACTION_CLOSE")});
    window->roundTrip();
    adapter().connection->synchronize();
    EXPECT_EQ(adapter().platform.isSettable(target.element(), AttributeName::position), false);
    EXPECT_FALSE(adapter().bridge.isSnappable(target.element()));
}

TEST_P(X11WindowAttributes, malformedPropertiesAreHarmless) {
    start();
    const auto window = open(Kind::decorated);
    window->place({300, 200, 700, 500});
    AXWindow target = adapter().window(window->id());
    ASSERT_EQ(target.frame(), (Rect{300, 200, 700, 500}));
    const xcb_window_t id = window->id();
    window->setCardinals(id, "_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL,
                         {0xffffffff, 0x80000000, 5, 5});
    window->setText(id, "WM_NORMAL_HINTS", XCB_ATOM_WM_SIZE_HINTS, "no hints at all");
    window->setCardinals(id, "WM_CLASS", XCB_ATOM_STRING, {1, 2, 3});
    window->setText(id, "_GTK_APPLICATION_ID", window->atom("UTF8_STRING"),
                    std::string(100000, 'x'));
    waitForWindowManager(*window);
    adapter().connection->synchronize();
    EXPECT_EQ(target.frame(), (Rect{300, 200, 700, 500}));
    EXPECT_TRUE(target.isWindow());
    target.setFrame({100, 100, 600, 400});
    EXPECT_EQ(target.frame()->origin(), (Point{100, 100}));
}

INSTANTIATE_TEST_SUITE_P(Every, X11WindowAttributes, testing::ValuesIn(WindowManager::kinds),
                         nameOf);

}  // namespace
}  // namespace lumatile::desktop
