#include "platform/x11/X11PixelRect.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace lumatile {
namespace {

TEST(X11PixelRect, edgesAreRoundedEachOnItsOwn) {
    EXPECT_EQ(X11PixelRect::rounding({0, 0, 455.4, 10}), (X11PixelRect{0, 0, 455, 10}));
    EXPECT_EQ(X11PixelRect::rounding({455.4, 0.4, 455.4, 10}), (X11PixelRect{455, 0, 456, 10}));
    EXPECT_EQ(X11PixelRect::rounding({-0.5, -0.6, 1, 1.2}), (X11PixelRect{0, -1, 1, 2}));
    EXPECT_EQ(X11PixelRect::rounding({0.5, 1.5, 1, 1}), (X11PixelRect{1, 2, 1, 1}));
}

TEST(X11PixelRect, whatCannotBeAskedIsNothing) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const Rect& rect : std::vector<Rect>{{nan, 0, 9, 9},
                                              {0, nan, 9, 9},
                                              {0, 0, nan, 9},
                                              {0, 0, 9, nan},
                                              {infinity, 0, 9, 9},
                                              {0, -infinity, 9, 9},
                                              {0, 0, infinity, 9},
                                              {32001, 0, 9, 9},
                                              {31999, 0, 9, 9},
                                              {-32001, 0, 9, 9},
                                              {0, 0, 0, 9},
                                              {0, 0, 9, 0.4},
                                              {0, 0, -9, 9},
                                              {0, 0, 9, -9}}) {
        EXPECT_EQ(X11PixelRect::rounding(rect), std::nullopt) << rect.x << " " << rect.width;
    }
}

RC_GTEST_PROP(X11PixelRect, columnsThatMeetStillMeetWhenRounded, ()) {
    const double width = *rc::gen::inRange(200, 8000);
    const int count = *rc::gen::inRange(2, 12);
    const double column = width / count;
    int end = 0;
    for (int index = 0; index < count; ++index) {
        const auto rounded = X11PixelRect::rounding({column * index, 0, column, 1});
        RC_ASSERT(rounded.has_value());
        RC_ASSERT(rounded->x == end);
        RC_ASSERT(std::abs(rounded->width - column) < 1);
        end = rounded->x + rounded->width;
    }
    RC_ASSERT(end == static_cast<int>(width));
}

RC_GTEST_PROP(X11PixelRect, wholePixelsStayWhatTheyAre, ()) {
    const X11PixelRect rect{*rc::gen::inRange(-10000, 10000), *rc::gen::inRange(-10000, 10000),
                            *rc::gen::inRange(1, 10000), *rc::gen::inRange(1, 10000)};
    RC_ASSERT(X11PixelRect::rounding(rect.toRect()) == rect);
}

}  // namespace
}  // namespace lumatile
