// Windows that the shift leaves alone, and one that it moves although nobody sees it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "tests/desktop/shifting/ShiftingTest.h"
#include "tests/desktop/shifting/WindowCondition.h"
#include "tests/desktop/support/ShiftingDesktop.h"

namespace lumatile::desktop {
namespace {

using testing::IsEmpty;

const PixelRect opened{400, 300, 640, 480};
const PixelRect elsewhere{1100, 200, 400, 300};

/// The child of the root that `window` is in, which may be itself.
xcb_window_t topLevelOf(XClient& client, xcb_window_t window) {
    while (true) {
        const XReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
            client.connection(), xcb_query_tree(client.connection(), window), nullptr));
        if (!tree || tree->parent == XCB_WINDOW_NONE || tree->parent == client.root()) {
            return window;
        }
        window = tree->parent;
    }
}

bool isViewable(XClient& client, xcb_window_t window) {
    return WindowCondition::of(client, window).mapState == XCB_MAP_STATE_VIEWABLE;
}

class UntouchedWindows : public ShiftingTest {
protected:
    /// A ring and a half in which an ordinary window moves, and `window` is not even asked to.
    static void expectUntouched(ShiftingDesktop& shifting, xcb_window_t window) {
        const auto ordinary = shifting.open(elsewhere);
        const PixelRect frame = shifting.frame(window);
        const WindowCondition condition = WindowCondition::of(shifting.observer(), window);
        const DesktopCondition desktop = DesktopCondition::of(shifting.observer());
        shifting.observer().forget();
        for (std::size_t taken = 0; taken < 24; ++taken) {
            shifting.step();
            const Offset& offset = ShiftingDesktop::ring[taken % ShiftingDesktop::ring.size()];
            ASSERT_EQ(shifting.frame(ordinary->id()), shifted(elsewhere, offset));
            ASSERT_EQ(shifting.frame(window), frame);
        }
        shifting.conductor().stopFeatures();
        EXPECT_EQ(shifting.frame(window), frame);
        EXPECT_EQ(WindowCondition::of(shifting.observer(), window), condition);
        EXPECT_EQ(DesktopCondition::of(shifting.observer()), desktop);
        EXPECT_THAT(shifting.observer().messages(window), IsEmpty());
    }
};

TEST_P(UntouchedWindows, areMaximizedOnes) {
    ShiftingDesktop shifting(GetParam());
    const auto window = shifting.open(opened);
    window->setState({"_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ"}, true);
    expectUntouched(shifting, window->id());
}

TEST_P(UntouchedWindows, areThoseMaximizedOnOneAxis) {
    for (const char* state : {"_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ"}) {
        SCOPED_TRACE(state);
        ShiftingDesktop shifting(GetParam());
        const auto window = shifting.open(opened);
        window->setState({state}, true);
        expectUntouched(shifting, window->id());
    }
}

TEST_P(UntouchedWindows, areFullScreenOnes) {
    ShiftingDesktop shifting(GetParam());
    const auto window = shifting.open(opened);
    window->setState({"_NET_WM_STATE_FULLSCREEN"}, true);
    ASSERT_TRUE(XClient::waitUntil([&] {
        return window->client() == PixelRect{0, 0, 1920, 1080};
    }));
    expectUntouched(shifting, window->id());
}

TEST_P(UntouchedWindows, areMinimizedOnes) {
    ShiftingDesktop shifting(GetParam());
    const auto window = shifting.open(opened);
    constexpr std::uint32_t iconicState = 3;
    shifting.observer().ask(window->id(), "WM_CHANGE_STATE", {iconicState});
    ASSERT_TRUE(XClient::waitUntil([&] { return window->hasState("_NET_WM_STATE_HIDDEN"); }));
    // openbox takes the client away at once, and moves its frame about while that shrinks.
    ASSERT_TRUE(XClient::waitUntil([&] {
        return window->frame() == opened &&
               !isViewable(shifting.observer(), topLevelOf(shifting.observer(), window->id()));
    }));
    expectUntouched(shifting, window->id());
}

TEST_P(UntouchedWindows, areShadedOnes) {
    ShiftingDesktop shifting(GetParam());
    const auto window = shifting.open(opened);
    window->setState({"_NET_WM_STATE_SHADED"}, true);
    expectUntouched(shifting, window->id());
}

TEST_P(UntouchedWindows, arePanels) {
    ShiftingDesktop shifting(GetParam());
    const auto panel = shifting.desktop().openPanel(0, 37);
    expectUntouched(shifting, panel->id());
}

TEST_P(UntouchedWindows, areTheBackgroundAndDialogs) {
    for (const TestWindow::Kind kind : {TestWindow::Kind::desktop, TestWindow::Kind::dialog}) {
        ShiftingDesktop shifting(GetParam());
        TestWindow::Options options;
        options.kind = kind;
        TestWindow window(shifting.desktop().display(), options);
        window.map();
        expectUntouched(shifting, window.id());
    }
}

TEST_P(UntouchedWindows, areThoseThatNoWindowManagerManages) {
    ShiftingDesktop shifting(GetParam());
    XClient client(shifting.desktop().display());
    const xcb_window_t tip = xcb_generate_id(client.connection());
    const std::uint32_t overrideRedirect = 1;
    xcb_create_window(client.connection(), XCB_COPY_FROM_PARENT, tip, client.root(), 250, 120, 90,
                      40, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
    xcb_map_window(client.connection(), tip);
    client.roundTrip();
    expectUntouched(shifting, tip);
}

TEST_P(UntouchedWindows, areThoseOfBlacklistedApplications) {
    ShiftingDesktop shifting(GetParam());
    const auto logo =
        shifting.desktop().openProgram({"xlogo", "-geometry", "300x250+700+600"}, "XLogo");
    shifting.conductor().blacklist().addToUserList("XLogo");
    expectUntouched(shifting, logo.window);
}

TEST_P(UntouchedWindows, areSoOnlyWhileTheBlacklistNamesThem) {
    ShiftingDesktop shifting(GetParam());
    const auto logo =
        shifting.desktop().openProgram({"xlogo", "-geometry", "300x250+700+600"}, "XLogo");
    const PixelRect home = shifting.frame(logo.window);
    shifting.step();
    EXPECT_EQ(shifting.frame(logo.window), shifted(home, ShiftingDesktop::ring[0]))
        << "what the blacklist takes out moves without it";
}

INSTANTIATE_TEST_SUITE_P(Shifting, UntouchedWindows, testing::ValuesIn(WindowManager::kinds),
                         ShiftingTest::nameOf);

class WindowsElsewhere : public ShiftingTest {};

TEST_P(WindowsElsewhere, moveOnTheirVirtualDesktopAndStayThere) {
    ShiftingDesktop shifting(GetParam());
    DesktopObserver& observer = shifting.observer();
    observer.ask(observer.root(), "_NET_NUMBER_OF_DESKTOPS", {2});
    ASSERT_TRUE(XClient::waitUntil(
        [&] { return observer.cardinal(observer.root(), "_NET_NUMBER_OF_DESKTOPS") == 2; }));
    const auto window = shifting.open(opened);
    const auto visible = shifting.open(elsewhere);
    constexpr std::uint32_t fromPager = 2;
    observer.ask(window->id(), "_NET_WM_DESKTOP", {1, fromPager});
    ASSERT_TRUE(XClient::waitUntil(
        [&] { return observer.cardinal(window->id(), "_NET_WM_DESKTOP") == 1; }));
    visible->activate();
    shifting.settle();
    const WindowCondition condition = WindowCondition::of(observer, window->id());
    const DesktopCondition desktop = DesktopCondition::of(observer);
    observer.forget();
    for (const Offset& offset : ShiftingDesktop::ring) {
        shifting.step();
        ASSERT_EQ(shifting.frame(window->id()), shifted(opened, offset));
        ASSERT_EQ(shifting.frame(visible->id()), shifted(elsewhere, offset));
        ASSERT_EQ(WindowCondition::of(observer, window->id()), condition);
        ASSERT_EQ(DesktopCondition::of(observer), desktop);
    }
    EXPECT_THAT(shifting.otherThanMoves(window->id()), IsEmpty());
    shifting.conductor().stopFeatures();
    EXPECT_EQ(shifting.frame(window->id()), opened);
    EXPECT_EQ(WindowCondition::of(observer, window->id()), condition);
}

INSTANTIATE_TEST_SUITE_P(Shifting, WindowsElsewhere, testing::ValuesIn(WindowManager::kinds),
                         ShiftingTest::nameOf);

}  // namespace
}  // namespace lumatile::desktop
