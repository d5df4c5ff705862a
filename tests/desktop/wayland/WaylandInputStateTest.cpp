#include "platform/wayland/WaylandInputState.h"

#include <gtest/gtest.h>
#include <idle-client-protocol.h>
#include <wayland-client.h>

#include <chrono>

#include "tests/desktop/support/KeyPosition.h"
#include "tests/desktop/wayland/Film.h"
#include "tests/desktop/wayland/WaylandDesk.h"

namespace lumatile::desktop {
namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point begin) {
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

std::uint32_t numberOf(wl_callback& callback) {
    return wl_proxy_get_id(static_cast<wl_proxy*>(static_cast<void*>(&callback)));
}

class WaylandInputStateTest : public testing::Test {
protected:
    void touch() {
        desk.input().press({}, KeyPosition::leftShift);
        touched = Clock::now();
    }

    /// Looks again and again, as the dimmer does.
    bool comesToBe(const std::function<bool(std::optional<double>)>& condition) {
        return desk.waitUntil([&] { return condition(state.idleSeconds()); });
    }
    bool comesToPause() {
        return comesToBe([](const auto& idle) { return idle && *idle > 0; });
    }
    bool comesToBeTouched() {
        return comesToBe([](const auto& idle) { return idle == 0; });
    }
    bool comesToBeKeptBack() {
        return comesToBe([](const auto& idle) { return !idle; });
    }

    WaylandDesk desk;
    WaylandInputState state{desk.connection(), [this] { return isButtonDown; }};
    Film film{desk.server().socket()};
    Clock::time_point touched;
    bool isButtonDown = false;
};

TEST_F(WaylandInputStateTest, tellsTheSecondsSinceTheLastInput) {
    EXPECT_TRUE(state.tellsIdleTime());
    for (int round = 0; round < 2; ++round) {
        touch();
        ASSERT_TRUE(comesToBeTouched());
        ASSERT_TRUE(comesToPause());
        // The compositor's timers are a twentieth off, and its word may come late.
        const double idle = state.idleSeconds().value_or(-1);
        EXPECT_LT(idle, secondsSince(touched) + 0.2);
        EXPECT_GT(idle, secondsSince(touched) - 1);
        ASSERT_TRUE(comesToBe([](const auto& seconds) { return seconds > 3; }));
        EXPECT_GT(secondsSince(touched), 2.8);
    }
}

TEST_F(WaylandInputStateTest, isAbsentWhileAFilmIsShown) {
    film.begin();
    touch();
    EXPECT_TRUE(comesToBeKeptBack());
    touch();
    EXPECT_EQ(state.idleSeconds(), std::nullopt);
    film.end();
    EXPECT_TRUE(comesToBeTouched());
    EXPECT_TRUE(comesToPause());
}

TEST_F(WaylandInputStateTest, isAbsentWhenAFilmBeginsBeforeTheScreensDarken) {
    state.expectDimming(4);
    ASSERT_TRUE(comesToPause());
    film.begin();
    double longest = 0;
    EXPECT_TRUE(comesToBe([&](const auto& idle) {
        longest = std::max(longest, idle.value_or(0));
        return !idle;
    }));
    EXPECT_LE(longest, 4);
}

TEST_F(WaylandInputStateTest, isAbsentWhenAFilmBeginsInTheDark) {
    state.expectDimming(2.4);
    ASSERT_TRUE(comesToBe([](const auto& idle) { return idle > 3; }));
    film.begin();
    EXPECT_TRUE(comesToBeKeptBack());
    // What is touched now nobody is told; the film's end does not make a long pause of it.
    touch();
    film.end();
    EXPECT_TRUE(comesToBeTouched());
    EXPECT_TRUE(comesToPause());
    EXPECT_LT(state.idleSeconds().value_or(0), secondsSince(touched) + 0.2);
}

// The dimmer looks every two seconds, and its fade takes less than half of one: that is all that a
// user who comes back has to wait for.
TEST_F(WaylandInputStateTest, knowsATouchInTheDarkAtTheVeryNextLook) {
    state.expectDimming(2.4);
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(comesToBe([](const auto& idle) { return idle > 3; }));
        touch();
        desk.settle();
        EXPECT_EQ(state.idleSeconds(), 0);
    }
}

TEST_F(WaylandInputStateTest, asksNothingInAPause) {
    ASSERT_TRUE(comesToPause());
    desk.settle();
    // A question would be an object of the compositor's, and they are numbered.
    const WaylandHandle<wl_callback> before(wl_display_sync(desk.connection().get()));
    for (int look = 0; look < 100; ++look) {
        EXPECT_GT(state.idleSeconds(), 2);
    }
    const WaylandHandle<wl_callback> after(wl_display_sync(desk.connection().get()));
    EXPECT_EQ(numberOf(*after), numberOf(*before) + 1);
}

TEST_F(WaylandInputStateTest, knowsOfTheButtonWhatItIsTold) {
    EXPECT_FALSE(state.isDragButtonDown());
    isButtonDown = true;
    EXPECT_TRUE(state.isDragButtonDown());
}

TEST_F(WaylandInputStateTest, hasTheSameNoticesFromTheOlderInterface) {
    IdleNotifier older;
    older.older = desk.connection().bindFirst<org_kde_kwin_idle>(org_kde_kwin_idle_interface, 1);
    ASSERT_TRUE(older.isAvailable());
    const auto seat = desk.connection().bindFirst<wl_seat>(wl_seat_interface, 1);
    int idled = 0;
    int resumed = 0;
    const IdleNotice notice(
        older, seat.get(), std::chrono::milliseconds::zero(), [&] { ++idled; }, [&] { ++resumed; });
    EXPECT_TRUE(desk.waitUntil([&] { return idled == 1; }));
    touch();
    EXPECT_TRUE(desk.waitUntil([&] { return resumed >= 1; }));
    EXPECT_TRUE(desk.waitUntil([&] { return idled >= 2; }));
}

}  // namespace
}  // namespace lumatile::desktop
