#include "platform/wayland/WaylandHighlight.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "tests/desktop/support/kwin/ScreenPicture.h"
#include "tests/desktop/wayland/WaylandDesk.h"

namespace lumatile::desktop {
namespace {

constexpr std::uint32_t below = 0xe0c080;
constexpr std::uint32_t drawn = 0xff2060a0;

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
    options.color = below;
    return options;
}

/// The frame in one colour, what is round it clear.
void fillPanel(const HighlightSurface::Canvas& canvas) {
    const auto pixel = [&](double units) {
        return static_cast<int>(std::lround(units * canvas.scale));
    };
    for (int y = pixel(canvas.panel.minY()); y < pixel(canvas.panel.maxY()); ++y) {
        for (int x = pixel(canvas.panel.minX()); x < pixel(canvas.panel.maxX()); ++x) {
            canvas.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(canvas.width) +
                          static_cast<std::size_t>(x)] = drawn;
        }
    }
}

/// Every second column of the screen's pixels.
void drawColumns(const HighlightSurface::Canvas& canvas) {
    for (std::size_t index = 0; index < canvas.pixels.size(); ++index) {
        const bool isLight = index % static_cast<std::size_t>(canvas.width) % 2 == 0;
        canvas.pixels[index] = isLight ? 0xffffffff : 0xff000000;
    }
}

class WaylandHighlightTest : public testing::Test {
protected:
    WaylandHighlightTest() {
        EXPECT_TRUE(desk.waitUntil([&] { return outputs.list().size() == 2; }));
        EXPECT_TRUE(highlight.isAvailable());
        EXPECT_TRUE(comesToShow({480, 300}, ScreenColor::of(below))) << seen;
    }

    bool comesToShow(const Point& place, const ScreenColor& wanted) {
        return desk.waitUntil([&] {
            seen = ScreenPicture::colorAt(desk.session(), static_cast<int>(place.x),
                                          static_cast<int>(place.y));
            return seen.isNear(wanted, 2);
        });
    }

    WaylandDesk desk{withPictures()};
    std::unique_ptr<NativeWindow> window = desk.openWindow(wholeScreen());
    WaylandLayers layers{desk.connection()};
    WaylandOutputs outputs{desk.connection()};
    Point origin;
    WaylandHighlight highlight{desk.connection(), layers, outputs, [this] { return origin; }};
    ScreenColor seen;
};

TEST_F(WaylandHighlightTest, liesOnTheFrameAboveAFullScreenWindow) {
    const ScreenColor under = ScreenColor::of(below);
    const ScreenColor color = ScreenColor::of(drawn);
    highlight.setOpacity(1);
    ASSERT_TRUE(highlight.show({101, 53, 320, 240}, fillPanel));
    ASSERT_TRUE(comesToShow({101, 53}, color)) << seen;
    const ScreenPicture picture(desk.session(), 0, 0, 960, 600);
    EXPECT_EQ(picture.at(420, 292), color);
    EXPECT_EQ(picture.at(100, 53), under);
    EXPECT_EQ(picture.at(101, 52), under);
    EXPECT_EQ(picture.at(421, 292), under);
    EXPECT_EQ(picture.at(420, 293), under);
    EXPECT_TRUE(window->state().active);
    highlight.hide();
    EXPECT_TRUE(comesToShow({101, 53}, under)) << seen;
}

TEST_F(WaylandHighlightTest, isSharpOnAFineScreen) {
    highlight.setOpacity(1);
    ASSERT_TRUE(highlight.show({971, 21, 101, 51}, drawColumns));
    const auto isSharp = [&] {
        // Units at which whole pixels begin, and on the fine screen alone.
        const ScreenPicture picture(desk.session(), 972, 22, 60, 20);
        if (picture.width() != 90 || picture.height() != 30) {
            return false;
        }
        const ScreenColor light = ScreenColor::of(0xffffff);
        const ScreenColor dark = ScreenColor::of(0x000000);
        const bool begin = picture.at(0, 10).isNear(light, 2);
        for (int x = 0; x < picture.width(); ++x) {
            if (!picture.at(x, 10).isNear((x % 2 == 0) == begin ? light : dark, 2)) {
                return false;
            }
        }
        return true;
    };
    EXPECT_TRUE(desk.waitUntil(isSharp));
}

TEST_F(WaylandHighlightTest, isFadedByWhatItDraws) {
    ASSERT_TRUE(highlight.show({100, 50, 320, 240}, fillPanel));
    const auto mixed = [](double opacity) {
        const ScreenColor under = ScreenColor::of(below);
        const ScreenColor over = ScreenColor::of(drawn);
        const auto channel = [opacity](int lower, int upper) {
            return static_cast<int>(std::lround(lower * (1 - opacity) + upper * opacity));
        };
        return ScreenColor{channel(under.red, over.red), channel(under.green, over.green),
                           channel(under.blue, over.blue)};
    };
    for (const double opacity : {0.25, 0.5, 0.75, 1.0, 0.5, 0.0}) {
        highlight.setOpacity(opacity);
        EXPECT_TRUE(comesToShow({200, 100}, mixed(opacity))) << opacity << ": " << seen;
    }
}

TEST_F(WaylandHighlightTest, followsTheFrameFromScreenToScreen) {
    highlight.setOpacity(1);
    const ScreenColor color = ScreenColor::of(drawn);
    for (int step = 0; step < 40; ++step) {
        const double size = 100 + step;
        highlight.show({10.0 * step, 20, size, size}, fillPanel);
        desk.connection().dispatch();
    }
    EXPECT_TRUE(comesToShow({520, 150}, color)) << seen;
    EXPECT_TRUE(comesToShow({300, 60}, ScreenColor::of(below))) << seen;
    ASSERT_TRUE(highlight.show({1000, 20, 100, 100}, fillPanel));
    EXPECT_TRUE(comesToShow({1050, 70}, color)) << seen;
    EXPECT_TRUE(comesToShow({520, 150}, ScreenColor::of(below))) << seen;
    EXPECT_FALSE(desk.connection().isLost());
}

TEST_F(WaylandHighlightTest, isInTheSpaceOfThePrimaryScreen) {
    origin = {960, 0};
    highlight.setOpacity(1);
    ASSERT_TRUE(highlight.show({-900, 100, 200, 200}, fillPanel));
    EXPECT_TRUE(comesToShow({100, 150}, ScreenColor::of(drawn))) << seen;
}

TEST_F(WaylandHighlightTest, isShownAgainAfterItsMemoryWasGivenBack) {
    highlight.setOpacity(1);
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(highlight.show({100, 50, 320, 240}, fillPanel));
        EXPECT_TRUE(comesToShow({200, 100}, ScreenColor::of(drawn))) << seen;
        highlight.release();
        EXPECT_TRUE(comesToShow({200, 100}, ScreenColor::of(below))) << seen;
    }
    EXPECT_FALSE(highlight.show({100, 50, 0, 240}, fillPanel));
}

TEST_F(WaylandHighlightTest, goesWithItsScreen) {
    highlight.setOpacity(1);
    ASSERT_TRUE(highlight.show({1000, 20, 100, 100}, fillPanel));
    ASSERT_TRUE(comesToShow({1050, 70}, ScreenColor::of(drawn))) << seen;
    std::vector<ArrangedOutput> without = withPictures().outputs;
    without[1].enabled = false;
    desk.arrange(without);
    ASSERT_TRUE(desk.waitUntil([&] { return outputs.list().size() == 1; }));
    ASSERT_TRUE(highlight.show({100, 50, 320, 240}, fillPanel));
    EXPECT_TRUE(comesToShow({200, 100}, ScreenColor::of(drawn))) << seen;
    EXPECT_FALSE(desk.connection().isLost());
}

}  // namespace
}  // namespace lumatile::desktop
