#include "platform/wayland/WaylandDimOverlays.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/desktop/support/kwin/ScreenPicture.h"
#include "tests/desktop/wayland/LayerClient.h"
#include "tests/desktop/wayland/WaylandDesk.h"

namespace lumatile::desktop {
namespace {

constexpr std::uint32_t light = 0xe0c080;

KWinDesktop::Options withPictures() {
    KWinDesktop::Options options;
    options.outputs = {{0, 0}, {960, 0, 1.5}};
    options.width = 960;
    options.height = 600;
    options.pictures = true;
    return options;
}

NativeWindow::Options wholeScreen() {
    NativeWindow::Options options;
    options.fullScreen = true;
    options.color = light;
    return options;
}

class WaylandDimOverlaysTest : public testing::Test {
protected:
    WaylandDimOverlaysTest() {
        EXPECT_TRUE(desk.waitUntil([&] { return outputs.list().size() == 2; }));
        // One on each screen.
        window->place({0, 0, 960, 600});
        EXPECT_TRUE(layers.isAvailable());
    }

    /// Whether these places, in the compositor's space, come to show the light colour behind black.
    bool comesToShow(double opacity, const std::vector<Point>& places) {
        const ScreenColor wanted = ScreenColor::of(light).behindBlack(opacity);
        return desk.waitUntil([&] {
            for (const Point& place : places) {
                seen = ScreenPicture::colorAt(desk.session(), static_cast<int>(place.x),
                                              static_cast<int>(place.y));
                if (!seen.isNear(wanted, 2)) {
                    return false;
                }
            }
            return true;
        });
    }

    WaylandDesk desk{withPictures()};
    std::unique_ptr<NativeWindow> window = desk.openWindow(wholeScreen());
    WaylandLayers layers{desk.connection()};
    WaylandOutputs outputs{desk.connection()};
    WaylandDimOverlays overlays{desk.connection(), layers, outputs};
    ScreenColor seen;
};

TEST_F(WaylandDimOverlaysTest, darkenAFullScreenWindowAndClear) {
    const std::vector<Point> corners = {{1, 1}, {958, 1}, {1, 598}, {958, 598}, {480, 300}};
    ASSERT_TRUE(comesToShow(0, corners)) << seen;
    for (const double opacity : {0.5, 0.25, 1.0, 0.0, 0.9, 0.0}) {
        overlays.setOpacity(opacity);
        EXPECT_TRUE(comesToShow(opacity, corners)) << opacity << ": " << seen;
    }
}

TEST_F(WaylandDimOverlaysTest, darkenAllScreensAndThoseThatComeMeanwhile) {
    NativeWindow::Options plain;
    plain.color = light;
    const auto other = desk.openWindow(plain);
    const Rect onSecond{1000, 50, 400, 300};
    other->place(onSecond);
    const std::vector<Point> both = {{480, 300}, {1200, 200}};
    ASSERT_TRUE(comesToShow(0, both)) << seen;
    overlays.setOpacity(0.5);
    EXPECT_TRUE(comesToShow(0.5, both)) << seen;

    std::vector<ArrangedOutput> without = withPictures().outputs;
    without[1].enabled = false;
    desk.arrange(without);
    ASSERT_TRUE(desk.waitUntil([&] { return outputs.list().size() == 1; }));
    // The other window is on this screen now, and its shadow on what is beside it.
    EXPECT_TRUE(comesToShow(0.5, {{5, 590}})) << seen;
    desk.arrange(withPictures().outputs);
    ASSERT_TRUE(desk.waitUntil([&] { return outputs.list().size() == 2; }));
    other->place(onSecond);
    EXPECT_TRUE(comesToShow(0.5, both)) << seen;
    overlays.setOpacity(0);
    EXPECT_TRUE(comesToShow(0, both)) << seen;
    EXPECT_FALSE(desk.connection().isLost());
}

TEST_F(WaylandDimOverlaysTest, areClearAfterARebuild) {
    overlays.setOpacity(0.5);
    ASSERT_TRUE(comesToShow(0.5, {{480, 300}})) << seen;
    overlays.rebuild();
    EXPECT_TRUE(comesToShow(0, {{480, 300}})) << seen;
    overlays.setOpacity(1.5);
    EXPECT_TRUE(comesToShow(1, {{480, 300}})) << seen;
    overlays.setOpacity(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(comesToShow(0, {{480, 300}})) << seen;
}

TEST_F(WaylandDimOverlaysTest, leaveFocusAndClicksToWhatIsBelow) {
    overlays.setOpacity(0.5);
    ASSERT_TRUE(comesToShow(0.5, {{480, 300}})) << seen;
    EXPECT_TRUE(window->state().active);
    const auto other = desk.openWindow({});
    other->place({100, 100, 300, 200});
    EXPECT_TRUE(comesToShow(0.5, {{480, 300}})) << seen;
    ASSERT_TRUE(other->state().active);
    // A click beside it reaches the window of the whole screen.
    desk.input().movePointer(700, 500);
    desk.input().buttonDown();
    desk.input().buttonUp();
    EXPECT_TRUE(desk.waitUntil([&] { return window->state().active; }));
}

TEST_F(WaylandDimOverlaysTest, coverPanelsAndTakeNoRoom) {
    desk.probe().fullScreen(window->id(), false);
    desk.input().movePointer(480, 300);
    constexpr int height = 40;
    const LayerClient panel(desk.server().socket(), {960, height, height});
    const auto usable = [&] { return desk.probe().screens().front().usable; };
    const auto isAsItWas = [&] { return usable() == Rect{0, height, 960, 600 - height}; };
    ASSERT_TRUE(desk.waitUntil(isAsItWas)) << usable().y;
    overlays.setOpacity(0.5);
    const ScreenColor dark = ScreenColor::of(0xffffff).behindBlack(0.5);
    EXPECT_TRUE(desk.waitUntil([&] {
        seen = ScreenPicture::colorAt(desk.session(), 480, height / 2);
        return seen.isNear(dark, 2);
    })) << seen;
    EXPECT_TRUE(isAsItWas()) << usable().y;
}

}  // namespace
}  // namespace lumatile::desktop
