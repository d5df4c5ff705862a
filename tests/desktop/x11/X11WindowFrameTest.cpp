#include "platform/x11/X11WindowFrame.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace lumatile {
namespace {

TEST(X11WindowFrame, decorationIsAddedAndShadowTakenAway) {
    const X11PixelRect client{100, 200, 640, 400};
    EXPECT_EQ((X11WindowFrame{client, {5, 6, 29, 7}, {}}.outer()),
              (X11PixelRect{95, 171, 651, 436}));
    EXPECT_EQ((X11WindowFrame{client, {}, {22, 26, 18, 30}}.outer()),
              (X11PixelRect{122, 218, 592, 352}));
}

TEST(X11WindowFrame, placingNamesTheCornerOfTheDecoration) {
    const X11WindowFrame decorated{{}, {5, 6, 29, 7}, {}};
    EXPECT_EQ(decorated.placing(decorated.clientFor({0, 0, 960, 1080})),
              (X11PixelRect{0, 0, 949, 1044}));
    const X11WindowFrame own{{}, {}, {22, 26, 18, 30}};
    EXPECT_EQ(own.placing(own.clientFor({0, 0, 960, 1080})), (X11PixelRect{-22, -18, 1008, 1128}));
}

TEST(X11WindowFrame, clientNeverShrinksToNothing) {
    const X11WindowFrame frame{{}, {5, 5, 29, 5}, {}};
    EXPECT_EQ(frame.clientFor({10, 10, 4, 4}), (X11PixelRect{15, 39, 1, 1}));
}

RC_GTEST_PROP(X11WindowFrame, clientForAndOuterUndoEachOther, ()) {
    const auto extents = [] {
        const auto side = [] { return *rc::gen::inRange(0, 60); };
        return X11Extents{side(), side(), side(), side()};
    };
    X11WindowFrame frame{{}, extents(), extents()};
    const X11PixelRect outer{*rc::gen::inRange(-3000, 3000), *rc::gen::inRange(-3000, 3000),
                             *rc::gen::inRange(200, 3000), *rc::gen::inRange(200, 3000)};
    frame.client = frame.clientFor(outer);
    RC_ASSERT(frame.outer() == outer);
}

}  // namespace
}  // namespace lumatile
