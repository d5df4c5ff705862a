// The program's item in the older kind of tray, a window inside another program's.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::desktop {
namespace {

constexpr std::uint8_t home = 110;  ///< Chooses the first item that can be chosen.

bool isViewable(XClient& client, xcb_window_t window) {
    const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        client.connection(), xcb_get_window_attributes(client.connection(), window), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

std::vector<xcb_window_t> children(XClient& client, xcb_window_t window) {
    const XReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        client.connection(), xcb_query_tree(client.connection(), window), nullptr));
    if (!tree) {
        return {};
    }
    const xcb_window_t* const first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

/// The first viewable window among `windows` that the program's toolkit has made; it says of each
/// of its windows how it could be embedded. What explains the item under the pointer comes and goes
/// by itself and is none that is looked for.
xcb_window_t windowOfTheToolkit(XClient& client, const std::vector<xcb_window_t>& windows) {
    const xcb_atom_t tip = client.atom("_NET_WM_WINDOW_TYPE_TOOLTIP");
    const auto found = std::find_if(windows.begin(), windows.end(), [&](xcb_window_t window) {
        return isViewable(client, window) && !client.cardinals(window, "_XEMBED_INFO").empty() &&
               client.cardinal(window, "_NET_WM_WINDOW_TYPE") != tip;
    });
    return found == windows.end() ? xcb_window_t{XCB_WINDOW_NONE} : *found;
}

/// The window of that kind inside another program's; none when there is no such.
xcb_window_t itemBelow(XClient& client, xcb_window_t outer) {
    const std::vector<xcb_window_t> inner = children(client, outer);
    xcb_window_t item = windowOfTheToolkit(client, inner);
    for (const xcb_window_t window : inner) {
        item = item == XCB_WINDOW_NONE ? itemBelow(client, window) : item;
    }
    return item;
}

/// The middle of a window, root coordinates.
std::pair<int, int> middle(XClient& client, xcb_window_t window) {
    const XReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(
        client.connection(), xcb_get_geometry(client.connection(), window), nullptr));
    const XReply<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
        client.connection(),
        xcb_translate_coordinates(client.connection(), window, client.root(), 0, 0), nullptr));
    return geometry && place
               ? std::pair(place->dst_x + geometry->width / 2, place->dst_y + geometry->height / 2)
               : std::pair(-1, -1);
}

/// The deepest window under the pointer.
xcb_window_t windowAtPointer(XClient& client) {
    xcb_window_t window = client.root();
    for (;;) {
        const XReply<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
            client.connection(), xcb_query_pointer(client.connection(), window), nullptr));
        if (!pointer || pointer->child == XCB_WINDOW_NONE) {
            return window;
        }
        window = pointer->child;
    }
}

class OlderTray : public testing::TestWithParam<std::vector<std::string>> {
protected:
    ChildProcess startTray() { return desktop_.session().start(GetParam(), "tray"); }

    bool isTrayThere() {
        const xcb_atom_t selection = desktop_.observer().atom("_NET_SYSTEM_TRAY_S0");
        const XReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
            desktop_.observer().connection(),
            xcb_get_selection_owner(desktop_.observer().connection(), selection), nullptr));
        return owner && owner->owner != XCB_WINDOW_NONE;
    }

    void startProgram() {
        program_ = std::make_unique<LumatileProcess>(desktop_.session(), LUMATILE_PROGRAM);
    }

    /// The item's window inside the tray.
    xcb_window_t waitForItem() {
        xcb_window_t item = XCB_WINDOW_NONE;
        XClient& client = desktop_.observer();
        XClient::waitUntil([&] {
            for (const xcb_window_t top : children(client, client.root())) {
                item = item == XCB_WINDOW_NONE ? itemBelow(client, top) : item;
            }
            return item != XCB_WINDOW_NONE;
        });
        return item;
    }

    /// Opens the menu by a click on the item, and chooses its first command by the keyboard.
    void chooseFirstCommand(std::uint8_t button) {
        XClient& client = desktop_.observer();
        const xcb_window_t item = waitForItem();
        ASSERT_NE(item, XCB_WINDOW_NONE);
        // A tray may still be laying out what it holds.
        ASSERT_TRUE(XClient::waitUntil([&] {
            const auto [x, y] = middle(client, item);
            desktop_.input().movePointer(x, y);
            desktop_.input().roundTrip();
            return windowAtPointer(client) == item;
        }));
        desktop_.input().buttonDown(button);
        desktop_.input().buttonUp(button);
        xcb_window_t menu = XCB_WINDOW_NONE;
        ASSERT_TRUE(XClient::waitUntil([&] {
            menu = windowOfTheToolkit(client, children(client, client.root()));
            return menu != XCB_WINDOW_NONE;
        }));
        // The toolkit takes the keyboard a moment after it shows the menu, and nothing tells when:
        // until then the keys reach the window, which ignores them.
        EXPECT_TRUE(XClient::waitUntil([&] {
            if (!isViewable(client, menu)) {
                return true;
            }
            desktop_.input().press({}, home);
            desktop_.input().press({}, KeyPosition::enter);
            desktop_.input().roundTrip();
            return false;
        }));
    }

    TestDesktop desktop_{MonitorLayout::landscape(), WindowManager::Kind::openbox};
    std::unique_ptr<LumatileProcess> program_;
};

TEST_P(OlderTray, holdsTheItemWhoseMenuSnaps) {
    const ChildProcess tray = startTray();
    ASSERT_TRUE(XClient::waitUntil([&] { return isTrayThere(); }));
    startProgram();
    for (const std::uint8_t button : {std::uint8_t{1}, std::uint8_t{3}}) {
        const auto window = desktop_.openWindow({});
        const PixelRect before = window->frame();
        chooseFirstCommand(button);
        EXPECT_TRUE(XClient::waitUntil([&] {
            const PixelRect now = window->frame();
            return now != before && now.x == 0 && now.width == 960;
        })) << "after button "
            << int{button} << " the window is at " << window->frame();
        window->close();
    }
    EXPECT_TRUE(LumatileProcess::isClean(program_->stop())) << program_->output();
    EXPECT_EQ(program_->output(), "");
}

TEST_P(OlderTray, getsTheItemWhenItStartsLater) {
    startProgram();
    const auto window = desktop_.openWindow({});
    const ChildProcess tray = startTray();
    EXPECT_NE(waitForItem(), XCB_WINDOW_NONE);
}

INSTANTIATE_TEST_SUITE_P(Trays, OlderTray,
                         testing::Values(std::vector<std::string>{"trayer", "--edge", "top",
                                                                  "--align", "right"},
                                         std::vector<std::string>{"tint2"}),
                         [](const auto& tray) { return tray.param.front(); });

}  // namespace
}  // namespace lumatile::desktop
