#include "Lumatile/highlight/OverlayGeometry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace lumatile {
namespace {

using Screens = std::vector<ToolkitScreen>;

/// A screen of so many pixels at a pixel of the root, as the toolkit describes it.
ToolkitScreen screenOf(const Rect& pixels, double scale) {
    return {
        {pixels.x, pixels.y, std::round(pixels.width / scale), std::round(pixels.height / scale)},
        scale};
}

/// What the toolkit makes of a window's place: pixels of the root. It scales the distance from the
/// screen's origin and the size, and rounds both.
Rect pixelsOf(const Rect& window, const ToolkitScreen& screen) {
    return {std::round((window.x - screen.frame.x) * screen.scale) + screen.frame.x,
            std::round((window.y - screen.frame.y) * screen.scale) + screen.frame.y,
            std::round(window.width * screen.scale), std::round(window.height * screen.scale)};
}

Rect panelPixels(const OverlayPlace& place, const Screens& screens) {
    const ToolkitScreen& screen = screens[place.screen];
    const Rect window = pixelsOf(place.window, screen);
    return {window.x + place.panel.x * screen.scale, window.y + place.panel.y * screen.scale,
            place.panel.width * screen.scale, place.panel.height * screen.scale};
}

TEST(OverlayGeometry, pixelsArePointsAtScaleOne) {
    const Screens screens = {screenOf({0, 0, 1920, 1080}, 1)};
    EXPECT_EQ(overlayPlace({960, 0, 960, 1040}, screens),
              (OverlayPlace{0, {960, 0, 960, 1040}, {0, 0, 960, 1040}}));
}

TEST(OverlayGeometry, twoPixelsAreAPointAtScaleTwo) {
    const Screens screens = {screenOf({0, 0, 3840, 2160}, 2)};
    EXPECT_EQ(overlayPlace({1920, 100, 1920, 1040}, screens),
              (OverlayPlace{0, {960, 50, 960, 520}, {0, 0, 960, 520}}));
    // Odd edges: half a point of the window is left over at each.
    EXPECT_EQ(overlayPlace({1921, 101, 100, 200}, screens),
              (OverlayPlace{0, {960, 50, 51, 101}, {0.5, 0.5, 50, 100}}));
}

TEST(OverlayGeometry, atScaleOneAndAHalfTheWindowIsALittleLarger) {
    const Screens screens = {screenOf({0, 0, 1920, 1080}, 1.5)};
    EXPECT_EQ(overlayPlace({960, 0, 960, 540}, screens),
              (OverlayPlace{0, {640, 0, 640, 360}, {0, 0, 640, 360}}));
    // 641 is 427.33 points: the window begins at point 427, which is pixel 640.5 and is rounded to
    // 641; it needs 66.67 points.
    const auto place = overlayPlace({641, 0, 100, 540}, screens);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->window, (Rect{427, 0, 67, 360}));
    EXPECT_EQ(place->panel.x, 0);
    EXPECT_DOUBLE_EQ(place->panel.width, 100 / 1.5);
    // 640 is 426.67 points: point 426 is pixel 639.
    const auto other = overlayPlace({640, 0, 100, 540}, screens);
    ASSERT_TRUE(other);
    EXPECT_EQ(other->window, (Rect{426, 0, 68, 360}));
    EXPECT_DOUBLE_EQ(other->panel.x, 1 / 1.5);
}

TEST(OverlayGeometry, edgesAreRoundedAsThoseOfWindows) {
    const Screens screens = {screenOf({0, 0, 1366, 768}, 1)};
    // Thirds of 1366 meet without a gap.
    const double third = 1366.0 / 3;
    EXPECT_EQ(overlayPlace({0, 0, third, 768}, screens)->window, (Rect{0, 0, 455, 768}));
    EXPECT_EQ(overlayPlace({third, 0, third, 768}, screens)->window, (Rect{455, 0, 456, 768}));
    EXPECT_EQ(overlayPlace({2 * third, 0, third, 768}, screens)->window, (Rect{911, 0, 455, 768}));
}

TEST(OverlayGeometry, theOriginIsThePrimarysWhereverItLies) {
    // Portrait at the root's origin, the primary on its right and lower.
    const Screens screens = {screenOf({1080, 300, 1920, 1080}, 1), screenOf({0, 0, 1080, 1920}, 1)};
    EXPECT_EQ(overlayPlace({0, 0, 960, 1080}, screens),
              (OverlayPlace{0, {1080, 300, 960, 1080}, {0, 0, 960, 1080}}));
    EXPECT_EQ(overlayPlace({-1080, -300, 1080, 960}, screens),
              (OverlayPlace{1, {0, 0, 1080, 960}, {0, 0, 1080, 960}}));
}

TEST(OverlayGeometry, everyScreenHasItsOwnScale) {
    const Screens screens = {screenOf({1080, 300, 3840, 2160}, 2), screenOf({0, 0, 1080, 1920}, 1),
                             screenOf({4920, 0, 1920, 1080}, 1.5)};
    EXPECT_EQ(overlayPlace({0, 0, 1920, 2160}, screens),
              (OverlayPlace{0, {1080, 300, 960, 1080}, {0, 0, 960, 1080}}));
    EXPECT_EQ(overlayPlace({-1080, 660, 1080, 960}, screens),
              (OverlayPlace{1, {0, 960, 1080, 960}, {0, 0, 1080, 960}}));
    EXPECT_EQ(overlayPlace({4800, -300, 960, 1080}, screens),
              (OverlayPlace{2, {5560, 0, 640, 720}, {0, 0, 640, 720}}));
}

TEST(OverlayGeometry, aFrameThatSticksOutIsOfTheScreenThatShowsMost) {
    const Screens screens = {screenOf({0, 0, 1000, 1000}, 1), screenOf({1000, 0, 1000, 1000}, 2)};
    EXPECT_EQ(overlayPlace({900, 900, 600, 600}, screens)->screen, 1U);
    EXPECT_EQ(overlayPlace({500, 900, 600, 600}, screens)->screen, 0U);
    // Wholly beside: the primary's.
    EXPECT_EQ(overlayPlace({-700, -700, 100, 100}, screens),
              (OverlayPlace{0, {-700, -700, 100, 100}, {0, 0, 100, 100}}));
}

TEST(OverlayGeometry, whatNoWindowCouldHaveHasNoPlace) {
    const Screens screens = {screenOf({0, 0, 1920, 1080}, 1)};
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const Rect& frame :
         {Rect{0, 0, 0, 100}, Rect{0, 0, 100, 0.4}, Rect{nan, 0, 100, 100}, Rect{0, nan, 100, 100},
          Rect{0, 0, nan, 100}, Rect{0, 0, 100, nan}, Rect{infinity, 0, 100, 100},
          Rect{0, 0, infinity, 100}, Rect{-infinity, 0, infinity, 100}, Rect{0, 0, 40'000, 100},
          Rect{0, 40'000, 100, 100}, Rect{-40'000, 0, 100, 100}}) {
        EXPECT_EQ(overlayPlace(frame, screens), std::nullopt) << testing::PrintToString(frame.x);
    }
    EXPECT_EQ(overlayPlace({0, 0, 100, 100}, {}), std::nullopt);
    // A negative size spans the same rectangle as its mirror image.
    EXPECT_EQ(overlayPlace({100, 100, -100, -100}, screens)->window, (Rect{0, 0, 100, 100}));
}

RC_GTEST_PROP(OverlayGeometry, panelIsExactAndTheWindowBarelyLarger, ()) {
    const std::vector<double> scales = {1, 1.25, 1.5, 1.75, 2, 3};
    Screens screens;
    int x = *rc::gen::inRange(-2000, 2000);
    for (int i = *rc::gen::inRange(1, 4); i > 0; --i) {
        const int width = *rc::gen::inRange(600, 4000);
        screens.push_back(screenOf({static_cast<double>(x), 1.0 * *rc::gen::inRange(-500, 500),
                                    static_cast<double>(width), 1.0 * *rc::gen::inRange(600, 2400)},
                                   *rc::gen::elementOf(scales)));
        x += width;
    }
    const Rect frame{*rc::gen::inRange(-30'000, 60'000) / 10.0,
                     *rc::gen::inRange(-10'000, 20'000) / 10.0,
                     *rc::gen::inRange(10, 30'000) / 10.0, *rc::gen::inRange(10, 20'000) / 10.0};
    const auto place = overlayPlace(frame, screens);
    RC_ASSERT(place.has_value());
    // The panel covers the pixels of a window there.
    const Rect origin = screens.front().frame;
    const double left = std::floor(frame.minX() + 0.5) + origin.x;
    const double top = std::floor(frame.minY() + 0.5) + origin.y;
    const double right = std::floor(frame.maxX() + 0.5) + origin.x;
    const double bottom = std::floor(frame.maxY() + 0.5) + origin.y;
    RC_ASSERT(panelPixels(*place, screens).isWithin(1e-6, {left, top, right - left, bottom - top}));
    // The window lies on whole points, holds the panel, and no point less would do.
    const ToolkitScreen& screen = screens[place->screen];
    const Rect window = pixelsOf(place->window, screen);
    RC_ASSERT(place->window.width == std::floor(place->window.width));
    RC_ASSERT(std::abs(place->window.x) == std::floor(std::abs(place->window.x)));
    RC_ASSERT(window.minX() <= left && window.maxX() >= right);
    RC_ASSERT(window.minY() <= top && window.maxY() >= bottom);
    RC_ASSERT(left - window.minX() < screen.scale + 0.5);
    RC_ASSERT(window.maxX() - right < screen.scale + 0.5);
    RC_ASSERT(top - window.minY() < screen.scale + 0.5);
    RC_ASSERT(window.maxY() - bottom < screen.scale + 0.5);
}

}  // namespace
}  // namespace lumatile
