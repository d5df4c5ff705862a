#include "platform/x11/X11EdgeTile.h"

#include <gtest/gtest.h>

#include <vector>

namespace lumatile {
namespace {

constexpr X11PixelRect before{500, 300, 700, 450};

TEST(X11EdgeTile, aWindowThatIsMovedOrResizedByHandIsNotTiled) {
    const std::vector<X11PixelRect> byHand{
        before,
        {0, 0, 700, 450},      // Moved.
        {500, 300, 900, 450},  // By its right side, then by its left one, its top and a corner.
        {400, 300, 800, 450},
        {500, 200, 700, 550},
        {500, 300, 800, 700},
        {0, 0, 1200, 750},  // By the upper left corner.
    };
    for (const X11PixelRect& now : byHand) {
        EXPECT_FALSE(X11EdgeTile::isTiled(before, now)) << now.x << " " << now.width;
    }
}

TEST(X11EdgeTile, aWindowWhoseOppositeEdgesAreBothElsewhereIsTiled) {
    const std::vector<X11PixelRect> tiles{{0, 0, 960, 1080},   {960, 0, 960, 1080},
                                          {0, 540, 960, 540},  {0, 0, 1920, 1080},
                                          {500, 0, 960, 1080}, {0, 300, 960, 1080}};
    for (const X11PixelRect& now : tiles) {
        EXPECT_TRUE(X11EdgeTile::isTiled(before, now)) << now.x << " " << now.width;
    }
}

}  // namespace
}  // namespace lumatile
