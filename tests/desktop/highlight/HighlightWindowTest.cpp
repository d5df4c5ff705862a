// The highlight as a window among others, under every window manager.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "tests/desktop/highlight/HighlightDesk.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::desktop {
namespace {

using testing::Contains;
using testing::Not;
using Change = HighlightDesk::Change;

/// A window that counts the clicks which reach it.
class ClickedWindow : public TestWindow {
public:
    ClickedWindow(const std::string& display, const Options& options)
        : TestWindow(display, options) {
        const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                   XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_BUTTON_PRESS |
                                   XCB_EVENT_MASK_BUTTON_RELEASE;
        xcb_change_window_attributes(connection(), id(), XCB_CW_EVENT_MASK, &mask);
        roundTrip();
    }

    int presses = 0;
    int releases = 0;

protected:
    void handle(const xcb_generic_event_t& event) override {
        presses += (event.response_type & 0x7f) == XCB_BUTTON_PRESS ? 1 : 0;
        releases += (event.response_type & 0x7f) == XCB_BUTTON_RELEASE ? 1 : 0;
        TestWindow::handle(event);
    }
};

class HighlightWindowTest : public testing::TestWithParam<std::tuple<WindowManager::Kind, bool>> {
protected:
    static constexpr PixelRect frame{320, 180, 640, 450};

    static WindowManager::Options options() {
        WindowManager::Options options;
        options.compositing = std::get<1>(GetParam());
        return options;
    }

    static TestWindow::Options below() {
        TestWindow::Options options;
        // Its title bar above the highlight, its client area below it.
        options.area = {300, 100, 700, 560};
        return options;
    }

    xcb_window_t focus() {
        const XReply<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
            highlight_.connection(), xcb_get_input_focus(highlight_.connection()), nullptr));
        return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
    }

    void show(const PixelRect& where) {
        highlight_.show(where);
        ASSERT_TRUE(highlight_.waitUntilShown(where));
    }

    /// It is raised after it was given its place.
    bool liesAbove(const TestWindow& window) {
        return XClient::waitUntil([&] { return highlight_.isAbove(window.id()); });
    }

    TestDesktop desktop_{MonitorLayout::landscapeAndPortrait(), std::get<0>(GetParam()), options()};
    HighlightDesk highlight_{desktop_.session(), desktop_.display(), {}};
};

TEST_P(HighlightWindowTest, isNobodysWindow) {
    const auto window = desktop_.openWindow(below());
    const xcb_window_t focused = focus();
    show(frame);
    EXPECT_TRUE(window->isActive());
    EXPECT_EQ(focus(), focused);
    EXPECT_THAT(highlight_.cardinals(highlight_.root(), "_NET_CLIENT_LIST"),
                Not(Contains(highlight_.window())));
    const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        highlight_.connection(),
        xcb_get_window_attributes(highlight_.connection(), highlight_.window()), nullptr));
    ASSERT_TRUE(attributes);
    EXPECT_TRUE(attributes->override_redirect) << "so it is on every virtual desktop";
    highlight_.hide();
    ASSERT_TRUE(highlight_.waitUntilHidden());
    EXPECT_TRUE(window->isActive());
    EXPECT_EQ(focus(), focused);
}

TEST_P(HighlightWindowTest, letsTheMouseThrough) {
    ClickedWindow window(desktop_.display(), below());
    window.mapActive();
    show(frame);
    // Inside, and on the band, which is there also where there is only a shape.
    int expected = 0;
    for (const auto& [x, y] : {std::pair{640, 405}, std::pair{640, 186}, std::pair{322, 400}}) {
        desktop_.input().movePointer(x, y);
        desktop_.input().buttonDown();
        desktop_.input().buttonUp();
        ++expected;
        EXPECT_TRUE(XClient::waitUntil([&] {
            return window.presses == expected && window.releases == expected;
        })) << x
            << ", " << y;
    }
    EXPECT_TRUE(highlight_.isMapped());
    // Where it appears under a pointer that holds the button, as in a drag.
    highlight_.hide();
    ASSERT_TRUE(highlight_.waitUntilHidden());
    desktop_.input().movePointer(640, 405);
    desktop_.input().buttonDown();
    show(frame);
    desktop_.input().buttonUp();
    EXPECT_TRUE(XClient::waitUntil([&] { return window.releases == expected + 1; }));
}

TEST_P(HighlightWindowTest, liesAboveEverything) {
    const auto panel = desktop_.openPanel(0, 40);
    const auto window = desktop_.openWindow(below());
    show({320, 500, 640, 580});
    EXPECT_TRUE(liesAbove(*window));
    EXPECT_TRUE(liesAbove(*panel));
    // A full-screen window that came later: the next frame is shown above it.
    window->setState({"_NET_WM_STATE_FULLSCREEN"}, true);
    window->activate();
    show(frame);
    EXPECT_TRUE(liesAbove(*window));
    EXPECT_TRUE(liesAbove(*panel));
    // And one that becomes it while nothing is shown.
    highlight_.hide();
    ASSERT_TRUE(highlight_.waitUntilHidden());
    window->activate();
    show(frame);
    EXPECT_TRUE(liesAbove(*window));
}

TEST_P(HighlightWindowTest, movesWithoutBeingHidden) {
    show(frame);
    highlight_.forget();
    show({0, 0, 960, 1080});
    show({1920, 960, 1080, 960});
    EXPECT_THAT(highlight_.changes(), Contains(Change::moved));
    EXPECT_THAT(highlight_.changes(), Not(Contains(Change::unmapped)));
    EXPECT_EQ(highlight_.opacity(), 1);
}

TEST_P(HighlightWindowTest, isUnmappedInTheEnd) {
    show(frame);
    highlight_.forget();
    highlight_.hide();
    ASSERT_TRUE(highlight_.waitUntilHidden());
    EXPECT_THAT(highlight_.changes(), Contains(Change::unmapped));
    // Both orders in one go: the fade in has not begun.
    highlight_.forget();
    highlight_.show(frame);
    highlight_.hide();
    ASSERT_TRUE(XClient::waitUntil([&] {
        // The toolkit says the end of the window before once more by an event of its own.
        const auto& changes = highlight_.changes();
        const auto shown = std::find(changes.begin(), changes.end(), Change::mapped);
        return std::find(shown, changes.end(), Change::unmapped) != changes.end();
    }));
    EXPECT_FALSE(highlight_.isMapped());
    // It can be shown again.
    show(frame);
}

INSTANTIATE_TEST_SUITE_P(Managers, HighlightWindowTest,
                         testing::Values(std::tuple{WindowManager::Kind::openbox, false},
                                         std::tuple{WindowManager::Kind::xfwm4, false},
                                         std::tuple{WindowManager::Kind::xfwm4, true},
                                         std::tuple{WindowManager::Kind::kwin, false},
                                         std::tuple{WindowManager::Kind::kwin, true},
                                         std::tuple{WindowManager::Kind::metacity, false},
                                         std::tuple{WindowManager::Kind::metacity, true}),
                         [](const auto& tested) {
                             return toString(std::get<0>(tested.param)) +
                                    (std::get<1>(tested.param) ? "_composited" : "");
                         });

}  // namespace
}  // namespace lumatile::desktop
