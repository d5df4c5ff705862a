// The program started before any window manager, as at login, or where there is none at all.

#include <gtest/gtest.h>
#include <signal.h>

#include <cstdlib>
#include <string>
#include <string_view>

#include "tests/desktop/support/DefaultShortcuts.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/TestDesktop.h"
#include "tests/desktop/support/WindowActivation.h"

namespace lumatile::desktop {
namespace {

/// A desktop without a window manager, and the program on it.
class LateWindowManager : public testing::Test {
protected:
    LateWindowManager()
        : desktop_(MonitorLayout::landscape()), program_(desktop_.session(), LUMATILE_PROGRAM) {}

    /// The window that the user can see by this title; none when there is none.
    xcb_window_t windowTitled(const std::string& title) {
        return visibleBelow(desktop_.observer().root(), title);
    }

    /// Whether the program holds this shortcut: nobody else can have it then. Not to be asked while
    /// the program may be about to take it.
    bool isHeld(const DefaultShortcut& shortcut) {
        XClient& client = desktop_.observer();
        constexpr std::uint16_t controlAndAlt = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
        const XReply<xcb_generic_error_t> error(xcb_request_check(
            client.connection(),
            xcb_grab_key_checked(client.connection(), 0, client.root(), controlAndAlt, shortcut.key,
                                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
        if (!error) {
            xcb_ungrab_key(client.connection(), shortcut.key, client.root(), controlAndAlt);
            client.roundTrip();
        }
        return error && error->error_code == XCB_ACCESS;
    }

    /// Whether the shortcut brings the window there, sooner or later.
    bool snaps(TestWindow& window, std::string_view command, const PixelRect& wanted) {
        const DefaultShortcut& shortcut = defaultShortcut(command);
        return XClient::waitUntil([&] {
            if (window.frame() == wanted) {
                return true;
            }
            desktop_.input().press(shortcut.modifiers(), shortcut.key);
            return false;
        });
    }

    void pressReturn() { desktop_.input().press({}, KeyPosition::enter); }

    TestDesktop desktop_;
    LumatileProcess program_;

private:
    xcb_window_t visibleBelow(xcb_window_t parent, const std::string& title) {
        xcb_connection_t* connection = desktop_.observer().connection();
        const XReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection, xcb_query_tree(connection, parent), nullptr));
        if (!tree) {
            return XCB_WINDOW_NONE;
        }
        const xcb_window_t* children = xcb_query_tree_children(tree.get());
        for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
            if (titleOf(children[i]) == title && isSeen(children[i])) {
                return children[i];
            }
            if (const xcb_window_t found = visibleBelow(children[i], title)) {
                return found;
            }
        }
        return XCB_WINDOW_NONE;
    }

    std::string titleOf(xcb_window_t window) {
        constexpr std::uint32_t longest = 64;
        DesktopObserver& observer = desktop_.observer();
        const XReply<xcb_get_property_reply_t> title(xcb_get_property_reply(
            observer.connection(),
            xcb_get_property(observer.connection(), 0, window, observer.atom("_NET_WM_NAME"),
                             observer.atom("UTF8_STRING"), 0, longest),
            nullptr));
        return title ? std::string(
                           static_cast<const char*>(xcb_get_property_value(title.get())),
                           static_cast<std::size_t>(xcb_get_property_value_length(title.get())))
                     : std::string();
    }

    bool isSeen(xcb_window_t window) {
        xcb_connection_t* connection = desktop_.observer().connection();
        const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            connection, xcb_get_window_attributes(connection, window), nullptr));
        return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    }
};

TEST_F(LateWindowManager, theOnboardingSaysWhatIsMissingAndGoesOnByItself) {
    const std::string title = "Lumatile Setup";
    const DefaultShortcut& left = defaultShortcut("left");
    EXPECT_FALSE(isHeld(left));
    ASSERT_TRUE(XClient::waitUntil([&] { return windowTitled(title) != XCB_WINDOW_NONE; }));
    EXPECT_FALSE(isHeld(left));

    // Without a window manager the pointer says who gets the keys.
    desktop_.input().movePointer(960, 540);
    pressReturn();
    EXPECT_TRUE(XClient::waitUntil([&] { return !program_.output().empty(); }));
    EXPECT_EQ(
        program_.output(),
        "AccessibilityGrantFlow: No window manager is running in this session. As soon as one "
        "is, Lumatile continues by itself.\n");
    EXPECT_FALSE(isHeld(left));

    // The program stands still until another window is in front, or it might be there before that.
    ASSERT_EQ(kill(program_.pid(), SIGSTOP), 0);
    desktop_.startWindowManager(WindowManager::Kind::openbox, {});
    const auto window = desktop_.openWindow({});
    ASSERT_EQ(kill(program_.pid(), SIGCONT), 0);
    // It comes in front as it goes on.
    const xcb_window_t onboarding = windowTitled(title);
    EXPECT_TRUE(
        XClient::waitUntil([&] { return desktop_.observer().activeWindow() == onboarding; }));
    // The last page is there to be read, and what it says works meanwhile.
    window->activate();
    ASSERT_TRUE(snaps(*window, "left", {0, 0, 960, 1080}));
    EXPECT_EQ(windowTitled(title), onboarding);

    activateWindow(desktop_.observer(), onboarding);
    pressReturn();
    EXPECT_TRUE(XClient::waitUntil([&] { return windowTitled(title) == XCB_WINDOW_NONE; }));
    window->activate();
    EXPECT_TRUE(snaps(*window, "right", {960, 0, 960, 1080}));
    EXPECT_TRUE(LumatileProcess::isClean(program_.stop())) << program_.output();
}

TEST_F(LateWindowManager, oneThatComesAMomentLaterIsNoReasonToBotherTheUser) {
    // On a busy machine a window manager takes longer to start than the program waits. The program
    // stands still meanwhile, so that for it the window manager is there at its next look.
    ASSERT_EQ(kill(program_.pid(), SIGSTOP), 0);
    desktop_.startWindowManager(WindowManager::Kind::openbox, {});
    ASSERT_EQ(kill(program_.pid(), SIGCONT), 0);
    const auto window = desktop_.openWindow({});
    ASSERT_TRUE(snaps(*window, "left", {0, 0, 960, 1080}));
    EXPECT_EQ(windowTitled("Lumatile Setup"), xcb_window_t{XCB_WINDOW_NONE});
    EXPECT_EQ(program_.output(), "");
    EXPECT_TRUE(LumatileProcess::isClean(program_.stop())) << program_.output();
}

}  // namespace
}  // namespace lumatile::desktop
