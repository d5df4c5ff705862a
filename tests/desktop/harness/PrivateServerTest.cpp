#include "tests/desktop/support/PrivateServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xcb/randr.h>

#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

struct Monitors {
    std::vector<PixelRect> all;
    PixelRect primary;
};

Monitors monitorsOf(const std::string& display) {
    const XClient client(display);
    const XReply<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
        client.connection(), xcb_randr_get_monitors(client.connection(), client.root(), 1),
        nullptr));
    Monitors monitors;
    for (auto place = xcb_randr_get_monitors_monitors_iterator(reply.get()); place.rem > 0;
         xcb_randr_monitor_info_next(&place)) {
        const PixelRect monitor{place.data->x, place.data->y, place.data->width,
                                place.data->height};
        monitors.all.push_back(monitor);
        if (place.data->primary != 0) {
            monitors.primary = monitor;
        }
    }
    return monitors;
}

PixelRect rootOf(const std::string& display) {
    const XClient client(display);
    return {0, 0, client.screen().width_in_pixels, client.screen().height_in_pixels};
}

class EveryLayout : public testing::TestWithParam<MonitorLayout> {};

TEST_P(EveryLayout, isWhatTheServerTells) {
    const PrivateServer server(GetParam());
    const Monitors monitors = monitorsOf(server.display());
    EXPECT_THAT(monitors.all, UnorderedElementsAreArray(GetParam().monitors));
    EXPECT_EQ(monitors.primary, GetParam().primaryMonitor());
    EXPECT_EQ(rootOf(server.display()), GetParam().root());
}

TEST_P(EveryLayout, canBeHadByNameOnAServerWithOneOutput) {
    const PrivateServer server(GetParam(), PrivateServer::Kind::virtualFramebuffer);
    const Monitors monitors = monitorsOf(server.display());
    EXPECT_THAT(monitors.all, UnorderedElementsAreArray(GetParam().monitors));
    EXPECT_EQ(monitors.primary, GetParam().primaryMonitor());
}

INSTANTIATE_TEST_SUITE_P(PrivateServer, EveryLayout,
                         testing::Values(MonitorLayout::landscape(),
                                         MonitorLayout::smallLandscape(), MonitorLayout::portrait(),
                                         MonitorLayout::landscapeAndPortrait(),
                                         MonitorLayout::portraitAndPrimaryLandscape()),
                         [](const auto& layout) { return layout.param.name; });

TEST(PrivateServer, severalRunSideBySide) {
    const PrivateServer first(MonitorLayout::landscape());
    const PrivateServer second(MonitorLayout::portrait());
    EXPECT_NE(first.display(), second.display());
    EXPECT_EQ(rootOf(first.display()), MonitorLayout::landscape().root());
    EXPECT_EQ(rootOf(second.display()), MonitorLayout::portrait().root());
}

TEST(PrivateServer, monitorsComeAndGoWhileItRuns) {
    PrivateServer server(MonitorLayout::landscape());
    server.arrange(MonitorLayout::landscapeAndPortrait());
    EXPECT_EQ(monitorsOf(server.display()).all.size(), 2U);
    server.unplug(1);
    EXPECT_THAT(monitorsOf(server.display()).all, ElementsAre(PixelRect{0, 0, 1920, 1080}));
    EXPECT_EQ(rootOf(server.display()), MonitorLayout::landscapeAndPortrait().root());
    server.arrange(MonitorLayout::portrait());
    EXPECT_THAT(monitorsOf(server.display()).all, ElementsAre(PixelRect{0, 0, 1080, 1920}));
    EXPECT_EQ(rootOf(server.display()), MonitorLayout::portrait().root());
}

TEST(PrivateServer, takesItsClientsWithItWhenItEnds) {
    PrivateServer server(MonitorLayout::landscape());
    XClient client(server.display());
    server.stop();
    EXPECT_TRUE(XClient::waitUntil([&] { return client.isLost(); }));
}

}  // namespace
}  // namespace lumatile::desktop
