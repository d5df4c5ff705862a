#include "platform/wayland/WaylandOutputs.h"

#include <gtest/gtest.h>

#include "tests/desktop/wayland/WaylandDesk.h"

namespace lumatile::desktop {
namespace {

KWinDesktop::Options three() {
    KWinDesktop::Options options;
    options.outputs = {{0, 0}, {1920, 0, 1, true}, {3000, 200, 1.5}};
    return options;
}

TEST(WaylandOutputs, areTheScreensOfTheCompositor) {
    WaylandDesk desk(three());
    const WaylandOutputs outputs(desk.connection());
    ASSERT_TRUE(desk.waitUntil([&] { return outputs.list().size() == 3; }));
    const std::vector<WaylandOutput> list = outputs.list();
    EXPECT_EQ(list[0].frame, (Rect{0, 0, 1920, 1080}));
    EXPECT_EQ(list[1].frame, (Rect{1920, 0, 1080, 1920})) << "upright";
    EXPECT_EQ(list[2].frame, (Rect{3000, 200, 1280, 720}));
    EXPECT_EQ(list[0].scale, 1);
    EXPECT_EQ(list[1].scale, 1);
    EXPECT_EQ(list[2].scale, 1.5);
    EXPECT_NE(list[0].object, nullptr);
    EXPECT_FALSE(list[0].name.empty());
    EXPECT_NE(list[0].name, list[1].name);
}

TEST(WaylandOutputs, followTheirScales) {
    WaylandDesk desk;
    const WaylandOutputs outputs(desk.connection());
    ASSERT_TRUE(desk.waitUntil([&] { return outputs.list().size() == 1; }));
    for (const double scale : {1.25, 1.75, 2.0, 1.0}) {
        desk.arrange({{0, 0, scale}});
        EXPECT_TRUE(desk.waitUntil([&] { return outputs.list().front().scale == scale; }))
            << scale << ", not " << outputs.list().front().scale;
    }
}

TEST(WaylandOutputs, comeAndGo) {
    WaylandDesk desk(three());
    WaylandOutputs outputs(desk.connection());
    ASSERT_TRUE(desk.waitUntil([&] { return outputs.list().size() == 3; }));
    const WaylandOutput third = outputs.list()[2];
    std::size_t told = 0;
    const auto subscription = outputs.observe([&] { told = outputs.list().size(); });
    std::vector<ArrangedOutput> without = three().outputs;
    without[2].enabled = false;
    desk.arrange(without);
    EXPECT_TRUE(desk.waitUntil([&] { return told == 2; }));
    desk.arrange(three().outputs);
    EXPECT_TRUE(desk.waitUntil([&] { return told == 3; }));
    EXPECT_TRUE(desk.waitUntil([&] { return outputs.list()[2].frame == third.frame; }));
    EXPECT_EQ(outputs.list()[2].name, third.name);
}

}  // namespace
}  // namespace lumatile::desktop
