#include <gtest/gtest.h>

#include "platform/x11/X11RefreshRate.h"
#include "tests/desktop/support/PrivateServer.h"

namespace lumatile::desktop {
namespace {

TEST(X11RefreshRateTest, isThatOfTheFastestMonitorNow) {
    PrivateServer server(MonitorLayout::landscapeAndPortrait());
    const auto connection = X11Connection::open(server.display());
    const X11RandR randr(*connection);
    X11RefreshRate rate(*connection, randr);
    EXPECT_NEAR(rate.frame(), 2200 * 1125 / 148.5e6, 1e-7);
    server.arrange(MonitorLayout::smallLandscape());
    connection->synchronize();
    EXPECT_NEAR(rate.frame(), 1792 * 798 / 85.5e6, 1e-7);
}

TEST(X11RefreshRateTest, isTheUsualOneWhereTheServerKnowsNone) {
    PrivateServer server(MonitorLayout::landscape(), PrivateServer::Kind::virtualFramebuffer,
                         {"RANDR"});
    const auto connection = X11Connection::open(server.display());
    const X11RandR randr(*connection);
    X11RefreshRate rate(*connection, randr);
    EXPECT_EQ(rate.frame(), 1.0 / 60);
}

}  // namespace
}  // namespace lumatile::desktop
