#include "platform/wayland/WaylandOutputs.h"

#include <gtest/gtest.h>

#include "tests/desktop/wayland/WaylandDesk.h"

namespace lumatile::desktop {
namespace {

TEST(WaylandOutputs, areTheScreensOfTheCompositor) {
    WaylandDesk desk({2, 1});
    const WaylandOutputs outputs(*desk.connection());
    ASSERT_TRUE(desk.waitUntil([&] { return outputs.list().size() == 2; }));
    const std::vector<WaylandOutput> list = outputs.list();
    EXPECT_EQ(list[0].frame, (Rect{0, 0, 1280, 800}));
    EXPECT_EQ(list[1].frame, (Rect{1280, 0, 1280, 800}));
    EXPECT_EQ(list[0].scale, 1);
    EXPECT_NE(list[0].object, nullptr);
    EXPECT_FALSE(list[0].name.empty());
    EXPECT_NE(list[0].name, list[1].name);
}

TEST(WaylandOutputs, haveFractionalScales) {
    WaylandDesk desk({1, 1.5});
    const WaylandOutputs outputs(*desk.connection());
    ASSERT_TRUE(desk.waitUntil([&] { return outputs.list().size() == 1; }));
    EXPECT_EQ(outputs.list().front().scale, 1.5);
}

}  // namespace
}  // namespace lumatile::desktop
