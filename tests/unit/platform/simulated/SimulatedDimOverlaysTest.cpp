#include "platform/simulated/SimulatedDimOverlays.h"

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"

namespace lumatile {
namespace {

TEST(SimulatedDimOverlays, areAsManyAsTheScreensWereWhenTheyWereBuilt) {
    SimulatedDesktop desk;
    desk.dimOverlays.setOpacity(0.5);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0) << "nothing to see where there is no screen";
    desk.plug("main", {0, 0, 1920, 1080});
    desk.dimOverlays.rebuild();
    desk.plug("second", {1920, 0, 1920, 1080});
    EXPECT_EQ(desk.dimOverlays.frames().size(), 1U);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0);
    desk.dimOverlays.setOpacity(0.5);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0.5);
    desk.dimOverlays.rebuild();
    EXPECT_EQ(desk.dimOverlays.frames().size(), 2U);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0);
    EXPECT_EQ(desk.dimOverlays.rebuilds(), 2U);
}

}  // namespace
}  // namespace lumatile
