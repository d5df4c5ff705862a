#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/desktop/protection/DimDesk.h"
#include "tests/desktop/support/Compositor.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::desktop {
namespace {

using testing::Contains;
using testing::Not;
using testing::SizeIs;

constexpr std::uint32_t color = 0xc8965a;

/// A window that notes what reaches it.
class TouchedWindow : public TestWindow {
public:
    using TestWindow::TestWindow;

    void listen() {
        const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                   XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_BUTTON_PRESS |
                                   XCB_EVENT_MASK_KEY_PRESS;
        xcb_change_window_attributes(connection(), id(), XCB_CW_EVENT_MASK, &mask);
        roundTrip();
    }

    int buttons() const { return buttons_; }
    int wheels() const { return wheels_; }
    int keys() const { return keys_; }

protected:
    void handle(const xcb_generic_event_t& event) override {
        TestWindow::handle(event);
        const int type = event.response_type & 0x7f;
        if (type == XCB_BUTTON_PRESS) {
            const bool isWheel =
                reinterpret_cast<const xcb_button_press_event_t&>(event).detail > 3;
            (isWheel ? wheels_ : buttons_) += 1;
        }
        keys_ += type == XCB_KEY_PRESS ? 1 : 0;
    }

private:
    int buttons_ = 0;
    int wheels_ = 0;
    int keys_ = 0;
};

/// A whole desktop, composited: by the window manager, or beside openbox, which does not.
class DimStackingTest : public testing::TestWithParam<WindowManager::Kind> {
protected:
    void start(const MonitorLayout& layout = MonitorLayout::landscapeAndPortrait()) {
        WindowManager::Options options;
        options.compositing = true;
        desktop_ = std::make_unique<TestDesktop>(layout, GetParam(), options);
        if (GetParam() == WindowManager::Kind::openbox) {
            compositor_.emplace(desktop_->session());
        }
        desk_ = std::make_unique<DimDesk>(desktop_->display());
    }

    TestWindow::Options windowAt(const PixelRect& area) {
        TestWindow::Options options;
        options.area = area;
        options.color = color;
        return options;
    }

    void expectShown(int x, int y, std::uint32_t of, double opacity) {
        desk_->expectShown(x, y, ScreenColor::of(of).behindBlack(opacity));
    }

    xcb_window_t focus() {
        XClient& client = desk_->client();
        const XReply<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
            client.connection(), xcb_get_input_focus(client.connection()), nullptr));
        return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
    }

    void expectInNoList() {
        XClient& client = desk_->client();
        const auto overlays = desk_->found();
        ASSERT_THAT(overlays, SizeIs(2));
        for (const char* list : {"_NET_CLIENT_LIST", "_NET_CLIENT_LIST_STACKING"}) {
            const auto windows = client.cardinals(client.root(), list);
            for (const FoundOverlay& overlay : overlays) {
                EXPECT_THAT(windows, Not(Contains(overlay.window))) << list;
                // Whatever is managed has this.
                EXPECT_THAT(client.cardinals(overlay.window, "WM_STATE"), testing::IsEmpty());
            }
        }
    }

    std::unique_ptr<TestDesktop> desktop_;
    std::optional<Compositor> compositor_;
    std::unique_ptr<DimDesk> desk_;
};

TEST_P(DimStackingTest, coversPanelsAndFullScreenWindowsAndIsInNoList) {
    start();
    const auto panel = desktop_->openPanel(0, 40);
    const auto plain = desktop_->openWindow(windowAt({2000, 200, 600, 500}));
    const auto full = desktop_->openWindow(windowAt({200, 150, 640, 400}));
    full->setState({"_NET_WM_STATE_FULLSCREEN"}, true);
    ASSERT_TRUE(XClient::waitUntil([&] { return full->client() == PixelRect{0, 0, 1920, 1080}; }));
    expectShown(960, 540, color, 0);

    ASSERT_TRUE(XClient::waitUntil([&] { return focus() == full->id(); }));
    desk_->overlays().rebuild();
    desk_->overlays().setOpacity(0.3);
    expectShown(960, 540, color, 0.3);
    expectShown(5, 1075, color, 0.3);
    expectShown(2300, 500, color, 0.3);
    for (const TestWindow* window : {panel.get(), plain.get(), full.get()}) {
        EXPECT_TRUE(desk_->areAbove(window->id()));
    }
    expectInNoList();
    EXPECT_TRUE(full->isActive());
    EXPECT_EQ(focus(), full->id());

    // The panel comes forward, and so do windows that become active.
    full->setState({"_NET_WM_STATE_FULLSCREEN"}, false);
    plain->activate();
    full->activate();
    desk_->overlays().setOpacity(0.3);
    desk_->catchUp();
    expectShown(960, 1070, 0x202428, 0.3);
    for (const TestWindow* window : {panel.get(), plain.get(), full.get()}) {
        EXPECT_TRUE(desk_->areAbove(window->id()));
    }
    expectInNoList();

    desk_->overlays().setOpacity(0);
    expectShown(960, 1070, 0x202428, 0);
    expectShown(2300, 500, color, 0);
    EXPECT_TRUE(full->isActive());
}

TEST_P(DimStackingTest, clicksWheelAndKeysGoThrough) {
    start();
    TouchedWindow window(desktop_->display(), windowAt({200, 150, 640, 400}));
    window.listen();
    window.mapActive();
    expectShown(500, 400, color, 0);
    desk_->overlays().rebuild();
    for (const double opacity : {0.3, 1.0, 0.5, 1.0, 0.0}) {
        SCOPED_TRACE(opacity);
        desk_->overlays().setOpacity(opacity);
        expectShown(500, 400, color, opacity);
        const int buttons = window.buttons();
        const int wheels = window.wheels();
        const int keys = window.keys();
        desktop_->input().movePointer(500, 400);
        desktop_->input().buttonDown(1);
        desktop_->input().buttonUp(1);
        desktop_->input().buttonDown(5);
        desktop_->input().buttonUp(5);
        desktop_->input().press({}, KeyPosition::a);
        ASSERT_TRUE(desk_->runUntil([&] {
            return window.buttons() > buttons && window.wheels() > wheels && window.keys() > keys;
        })) << window.buttons() - buttons
            << " clicks, " << window.wheels() - wheels << " of the wheel, " << window.keys() - keys
            << " keys";
        EXPECT_EQ(window.buttons(), buttons + 1);
        EXPECT_EQ(window.keys(), keys + 1);
        EXPECT_TRUE(window.isActive());
    }
}

TEST_P(DimStackingTest, coversWhatIsMappedLaterOnceTheLevelIsSetAgain) {
    start();
    const auto window = desktop_->openWindow(windowAt({200, 150, 1200, 800}));
    expectShown(500, 400, color, 0);
    desk_->overlays().rebuild();
    desk_->overlays().setOpacity(0.3);
    expectShown(500, 400, color, 0.3);
    const Backdrop popup(desktop_->display(), 0x40c0a0, {450, 350, 100, 100});
    expectShown(500, 400, 0x40c0a0, 0);
    const auto later = desktop_->openWindow(windowAt({700, 500, 300, 200}));
    desk_->overlays().setOpacity(0.3);
    expectShown(500, 400, 0x40c0a0, 0.3);
    expectShown(800, 620, color, 0.3);
    EXPECT_TRUE(desk_->areAbove(popup.id()));
    EXPECT_TRUE(desk_->areAbove(later->id()));
    EXPECT_TRUE(later->isActive());
}

TEST_P(DimStackingTest, noShadowFallsOnTheNeighbouringMonitor) {
    start();
    // Not over everything: xfwm4 takes such a window for a game and shows it past its compositor,
    // with nothing translucent in front.
    const Backdrop backdrop(desktop_->display(), color, {1500, 100, 900, 800});
    expectShown(1920, 500, color, 0);
    desk_->overlays().rebuild();
    desk_->overlays().setOpacity(0.3);
    constexpr int reach = 40;  // More than the radius of these compositors' shadows.
    for (int x = 1920 - reach; x < 1920 + reach && !HasFailure(); ++x) {
        expectShown(x, 500, color, 0.3);
    }
}

INSTANTIATE_TEST_SUITE_P(X11DimOverlays, DimStackingTest, testing::ValuesIn(WindowManager::kinds),
                         [](const auto& kind) { return toString(kind.param); });

}  // namespace
}  // namespace lumatile::desktop
