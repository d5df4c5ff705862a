#include "platform/wayland/WaylandConnection.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <wayland-client.h>

#include <algorithm>
#include <chrono>

#include "tests/desktop/wayland/WaylandDesk.h"

namespace lumatile::desktop {
namespace {

using Clock = std::chrono::steady_clock;

TEST(WaylandConnection, isNoneWhereThereIsNoCompositor) {
    EXPECT_EQ(WaylandConnection::open("/nowhere/wayland-0"), nullptr);
}

TEST(WaylandConnection, knowsWhatTheCompositorOffers) {
    WaylandDesk desk;
    const auto& globals = desk.connection().globals();
    const auto seat = std::find_if(globals.begin(), globals.end(), [](const WaylandGlobal& global) {
        return global.interface == "wl_seat";
    });
    ASSERT_NE(seat, globals.end());
    EXPECT_GE(seat->version, 5U);
    EXPECT_NE(desk.connection().bindFirst<wl_seat>(wl_seat_interface, 5), nullptr);
    EXPECT_EQ(desk.connection().bindFirst<wl_buffer>(wl_buffer_interface, 1), nullptr);
    EXPECT_TRUE(desk.connection().synchronize());
    EXPECT_FALSE(desk.connection().isLost());
}

TEST(WaylandConnection, waitsForNoCompositorThatHangs) {
    WaylandDesk desk;
    kill(desk.server().pid(), SIGSTOP);
    const Clock::time_point begin = Clock::now();
    EXPECT_FALSE(desk.connection().synchronize());
    const Clock::duration waited = Clock::now() - begin;
    EXPECT_GE(waited, WaylandConnection::longestRoundTrip);
    EXPECT_LT(waited, 4 * WaylandConnection::longestRoundTrip);

    // Whoever starts meanwhile is not held up either, and learns later what there is.
    const std::unique_ptr<WaylandConnection> early =
        WaylandConnection::open(desk.server().socket());
    ASSERT_NE(early, nullptr);
    EXPECT_TRUE(early->globals().empty());
    EXPECT_LT(Clock::now() - begin, 8 * WaylandConnection::longestRoundTrip);
    early->dispatch();
    EXPECT_FALSE(early->isLost());

    kill(desk.server().pid(), SIGCONT);
    const Deadline deadline = Deadline::usual();
    while (early->globals().empty() && !deadline.isOver()) {
        early->synchronize();
    }
    EXPECT_FALSE(early->globals().empty());
}

TEST(WaylandConnection, isLostWithTheCompositor) {
    WaylandDesk desk;
    EXPECT_FALSE(desk.connection().isLost());
    desk.server().crash();
    EXPECT_TRUE(desk.waitUntil([&] { return desk.connection().isLost(); }));
    // Nothing is asked of it any more, and nothing waits.
    desk.connection().dispatch();
    EXPECT_FALSE(desk.connection().synchronize());
}

TEST(WaylandConnection, isLostWhenTheCompositorRefusesSomething) {
    WaylandDesk desk;
    const auto compositor = desk.connection().bindFirst<wl_compositor>(wl_compositor_interface, 4);
    const WaylandHandle<wl_surface> surface(wl_compositor_create_surface(compositor.get()));
    wl_surface_set_buffer_scale(surface.get(), -1);
    EXPECT_TRUE(desk.waitUntil([&] { return desk.connection().isLost(); }));
}

}  // namespace
}  // namespace lumatile::desktop
