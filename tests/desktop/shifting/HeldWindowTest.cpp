// Windows that do not move although they are asked to: they hold up the first step and no other.

#include <gtest/gtest.h>

#include <chrono>

#include "platform/x11/X11WindowWriter.h"
#include "tests/desktop/shifting/ShiftingTest.h"
#include "tests/desktop/support/HeldWindowManager.h"
#include "tests/desktop/support/ShiftingDesktop.h"
#include "tests/desktop/support/VainWaits.h"

namespace lumatile::desktop {
namespace {

const PixelRect opened{400, 300, 640, 480};
const PixelRect elsewhere{1100, 200, 400, 300};

/// Seconds that a step waits for windows that do not move.
double secondsWaitedIn(ShiftingDesktop& shifting) {
    return vainSecondsFor([&] { shifting.step(); });
}

constexpr double usersTimeout = X11WindowWriter::longestTimeout;

/// Far less than it takes to find out that a window does not move, where one is waited for so long.
constexpr double noWait(double timeout) { return timeout / 4; }

class HeldWindows : public ShiftingTest {};

TEST_P(HeldWindows, ofAWindowManagerThatHangsAreWaitedForOnce) {
    ShiftingDesktop shifting(GetParam(), ShiftingDesktop::shiftOnly, {}, usersTimeout);
    const auto first = shifting.open(opened);
    const auto second = shifting.open(elsewhere);
    const auto third = shifting.open({200, 600, 300, 200});
    shifting.step();
    ASSERT_TRUE(XClient::waitUntil(
        [&] { return shifting.frame(first->id()) == shifted(opened, ShiftingDesktop::ring[0]); }));
    shifting.settle();
    HeldWindowManager held(shifting.desktop().windowManager(), shifting.observer());
    const auto before = std::chrono::steady_clock::now();
    const double waited = secondsWaitedIn(shifting);
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - before;
    EXPECT_GE(passed.count(), usersTimeout);
    EXPECT_LT(waited, 2 * usersTimeout) << "one wait for three windows";
    for (int taken = 0; taken < 3; ++taken) {
        EXPECT_LT(secondsWaitedIn(shifting), noWait(usersTimeout));
    }
    EXPECT_EQ(shifting.frame(first->id()), shifted(opened, ShiftingDesktop::ring[0]));
}

TEST_P(HeldWindows, walkOnAsIfNothingHadBeenWhenTheWindowManagerHangsForAStep) {
    ShiftingDesktop shifting(GetParam());
    const auto first = shifting.open(opened);
    const auto second = shifting.open(elsewhere);
    const auto areAt = [&](const Offset& offset) {
        return shifting.frame(first->id()) == shifted(opened, offset) &&
               shifting.frame(second->id()) == shifted(elsewhere, offset);
    };
    shifting.step();
    HeldWindowManager held(shifting.desktop().windowManager(), shifting.observer());
    shifting.step();
    EXPECT_TRUE(areAt(ShiftingDesktop::ring[0]));
    held.letGo();
    EXPECT_TRUE(XClient::waitUntil([&] { return areAt(ShiftingDesktop::ring[1]); }))
        << "what was asked for meanwhile comes late";
    for (std::size_t point = 2; point < ShiftingDesktop::ring.size(); ++point) {
        shifting.step();
        EXPECT_TRUE(areAt(ShiftingDesktop::ring[point])) << point;
    }
    shifting.conductor().stopFeatures();
    EXPECT_TRUE(areAt({}));
}

INSTANTIATE_TEST_SUITE_P(Shifting, HeldWindows, testing::ValuesIn(WindowManager::kinds),
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
