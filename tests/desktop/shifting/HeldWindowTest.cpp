// Windows that do not move although they are asked to: they hold up the first step and no other.

#include <gtest/gtest.h>

#include <chrono>

#include "tests/desktop/support/ShiftingDesktop.h"
#include "tests/desktop/support/VainWaits.h"
#include "tests/desktop/support/shifting/ShiftingDesk.h"

namespace lumatile::desktop {
namespace {

const PixelRect opened{400, 300, 640, 480};
const PixelRect elsewhere{1100, 200, 400, 300};

/// Seconds that a step waits for windows that do not move.
template <typename Desk>
double secondsWaitedIn(Desk& desk) {
    return vainSecondsFor([&] { desk.step(); });
}

// What a user is made to wait for a window at most, seconds.
constexpr double usersTimeout = 0.25;

/// Far less than it takes to find out that a window does not move, where one is waited for so long.
constexpr double noWait(double timeout) { return timeout / 4; }

class HeldWindows : public ShiftingTest {};

TEST_P(HeldWindows, ofAWindowManagerThatHangsAreWaitedForOnce) {
    const auto desk = start({.isImpatient = true});
    const auto first = desk->open(opened);
    const auto second = desk->open(elsewhere);
    const auto third = desk->open({200, 600, 400, 300});
    desk->settle();
    desk->step();
    ASSERT_TRUE(
        desk->waitUntil([&] { return first->frame() == shifted(opened, ShiftingDesk::ring[0]); }));
    desk->settle();
    desk->hold();
    const auto before = std::chrono::steady_clock::now();
    const double waited = secondsWaitedIn(*desk);
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - before;
    EXPECT_GE(passed.count(), usersTimeout);
    EXPECT_LT(waited, 2 * usersTimeout) << "one wait for three windows";
    for (int taken = 0; taken < 3; ++taken) {
        EXPECT_LT(secondsWaitedIn(*desk), noWait(usersTimeout));
    }
    EXPECT_EQ(first->frame(), shifted(opened, ShiftingDesk::ring[0]));
    desk->letGo();
}

TEST_P(HeldWindows, walkOnAsIfNothingHadBeenWhenTheWindowManagerHangsForAStep) {
    const auto desk = start();
    const auto first = desk->open(opened);
    const auto second = desk->open(elsewhere);
    desk->settle();
    const auto areAt = [&](const Offset& offset) {
        return first->frame() == shifted(opened, offset) &&
               second->frame() == shifted(elsewhere, offset);
    };
    desk->step();
    EXPECT_TRUE(areAt(ShiftingDesk::ring[0]));
    desk->hold();
    desk->step();
    EXPECT_TRUE(areAt(ShiftingDesk::ring[0]));
    desk->letGo();
    EXPECT_TRUE(desk->waitUntil([&] { return areAt(ShiftingDesk::ring[1]); }))
        << "what was asked for meanwhile comes late";
    for (std::size_t point = 2; point < ShiftingDesk::ring.size(); ++point) {
        desk->step();
        EXPECT_TRUE(areAt(ShiftingDesk::ring[point])) << point;
    }
    desk->conductor().stopFeatures();
    EXPECT_TRUE(areAt({}));
}

INSTANTIATE_TEST_SUITE_P(Shifting, HeldWindows, testing::ValuesIn(shiftingKinds()),
                         ShiftingTest::nameOf);

// The one window manager that tiles by a command which a test can give.
TEST(TiledWindow, ofKwinStaysInItsTileAndIsNotWaitedForAgain) {
    ShiftingDesktop shifting(WindowManager::Kind::kwin);
    const auto window = shifting.open(opened);
    const auto tile = shifting.desktop().session().start(
        {"dbus-send", "--session", "--print-reply", "--dest=org.kde.kglobalaccel",
         "/component/kwin", "org.kde.kglobalaccel.Component.invokeShortcut",
         "string:Window Quick Tile Left"},
        "tile");
    const PixelRect half{0, 0, 960, 1080};
    ASSERT_TRUE(XClient::waitUntil([&] { return window->frame() == half; }))
        << window->frame() << shifting.desktop().session().output("tile");
    const auto logo =
        shifting.desktop().openProgram({"xlogo", "-geometry", "300x250+1200+300"}, "XLogo");
    const PixelRect logoHome = shifting.frame(logo.window);
    shifting.settle();
    EXPECT_LE(secondsWaitedIn(shifting), 1.5 * ShiftingDesktop::patient);
    for (std::size_t point = 1; point < ShiftingDesktop::ring.size(); ++point) {
        EXPECT_LT(secondsWaitedIn(shifting), noWait(ShiftingDesktop::patient)) << point;
        EXPECT_EQ(window->frame(), half);
        EXPECT_EQ(shifting.frame(logo.window), shifted(logoHome, ShiftingDesktop::ring[point]))
            << "the others walk on";
    }
    shifting.conductor().stopFeatures();
    EXPECT_EQ(window->frame(), half);
    EXPECT_EQ(shifting.frame(logo.window), logoHome);
}

}  // namespace
}  // namespace lumatile::desktop
