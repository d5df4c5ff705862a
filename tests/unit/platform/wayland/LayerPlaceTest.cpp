#include "platform/wayland/LayerPlace.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace lumatile {
namespace {

WaylandOutput outputAt(const Rect& frame, double scale) { return {nullptr, "", frame, scale}; }

// Side by side: a plain one, a fine one, and one above them.
const std::vector<WaylandOutput> screens = {
    outputAt({0, 0, 1920, 1080}, 1),
    outputAt({1920, 0, 1280, 720}, 1.5),
    outputAt({100, -900, 1600, 900}, 2),
};

TEST(LayerPlace, isTheFrameOnAPlainScreen) {
    const auto place = layerPlace({100, 50, 320, 240}, screens);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->output, screens[0]);
    EXPECT_EQ(place->surface, (Rect{100, 50, 320, 240}));
    EXPECT_EQ(place->panel, (Rect{0, 0, 320, 240}));
    EXPECT_EQ(place->width, 320);
    EXPECT_EQ(place->height, 240);
}

TEST(LayerPlace, goesFromWholePixelsToWholePixels) {
    const auto place = layerPlace({1921, 5, 100, 101}, screens);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->output, screens[1]);
    EXPECT_EQ(place->surface, (Rect{0, 4, 102, 102}));
    EXPECT_EQ(place->panel, (Rect{1, 1, 100, 101}));
    EXPECT_EQ(place->width, 153);
    EXPECT_EQ(place->height, 153);
}

TEST(LayerPlace, isOnTheScreenOfTheMidpointElseOnTheOneThatShowsMost) {
    EXPECT_EQ(layerPlace({1800, 100, 300, 100}, screens)->output, screens[1]);
    EXPECT_EQ(layerPlace({1600, 100, 400, 100}, screens)->output, screens[0]);
    EXPECT_EQ(layerPlace({200, -400, 300, 300}, screens)->output, screens[2]);
    EXPECT_EQ(layerPlace({2200, 600, 400, 500}, screens)->output, screens[1]);
}

TEST(LayerPlace, roundsTheFrameByItsEdges) {
    EXPECT_EQ(layerPlace({10.4, 20.5, 99.2, 50.4}, screens)->surface, (Rect{10, 21, 100, 50}));
}

TEST(LayerPlace, isNoneForFramesThatNoWindowCouldHave) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const Rect& frame :
         {Rect{nan, 0, 10, 10}, Rect{0, 0, nan, 10}, Rect{0, 0, infinity, 10}, Rect{0, 0, 0.4, 10},
          Rect{0, 0, 0, 0}, Rect{40000, 0, 10, 10}, Rect{0, 0, 30000, 30000}}) {
        EXPECT_EQ(layerPlace(frame, screens), std::nullopt);
    }
    EXPECT_EQ(layerPlace({0, 0, 100, 100}, {}), std::nullopt);
}

RC_GTEST_PROP(LayerPlace, holdsThePanelBetweenWholePixels, ()) {
    const double scale = *rc::gen::element(1.0, 1.1, 1.2, 1.25, 1.5, 1.75, 2.0, 2.5, 3.0);
    const std::vector<WaylandOutput> one = {outputAt({300, -200, 1800, 1200}, scale)};
    const Rect frame{static_cast<double>(*rc::gen::inRange(300, 1500)),
                     static_cast<double>(*rc::gen::inRange(-200, 600)),
                     static_cast<double>(*rc::gen::inRange(1, 900)),
                     static_cast<double>(*rc::gen::inRange(1, 600))};
    const auto place = layerPlace(frame, one);
    RC_ASSERT(place.has_value());
    const Rect& surface = place->surface;
    RC_ASSERT(place->panel.offsetBy(surface.x + 300, surface.y - 200) == frame);
    RC_ASSERT((Rect{0, 0, surface.width, surface.height}.contains(place->panel)));
    for (const double edge : {surface.minX(), surface.minY(), surface.maxX(), surface.maxY()}) {
        RC_ASSERT(edge == std::round(edge));
        RC_ASSERT(std::abs(edge * scale - std::round(edge * scale)) < 1e-6);
    }
    RC_ASSERT(std::abs(surface.width * scale - place->width) < 1e-6);
    RC_ASSERT(std::abs(surface.height * scale - place->height) < 1e-6);
    RC_ASSERT(surface.width < frame.width + 24);
    RC_ASSERT(surface.height < frame.height + 24);
}

}  // namespace
}  // namespace lumatile
