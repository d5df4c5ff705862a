// The hour's edge jitter on real windows, terminals among them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "tests/desktop/shifting/ShiftingTest.h"
#include "tests/desktop/support/ShiftingDesktop.h"

namespace lumatile::desktop {
namespace {

using testing::IsEmpty;

constexpr double hour = 3600;
constexpr double tolerance = 6;
const PixelRect screen{0, 0, 1920, 1080};

class Jitter : public ShiftingTest {
protected:
    /// The hour's offset at this moment.
    static Offset jitterNow(ShiftingDesktop& shifting) {
        return JitterPolicy{tolerance, hour}.offset(shifting.clock().wallSeconds());
    }
};

TEST_P(Jitter, movesTheSeamOfTwoHalvesWithTheHour) {
    ShiftingDesktop shifting(GetParam(), ShiftingDesktop::jitterOnly);
    const auto left = shifting.open({100, 100, 500, 400});
    shifting.run("command.left");
    const auto right = shifting.open({900, 100, 500, 400});
    shifting.run("command.right");
    std::set<int> seams;
    for (int passed = 0; passed < 12; ++passed) {
        const int seam = screen.width / 2 + static_cast<int>(jitterNow(shifting).dx);
        ASSERT_EQ(shifting.frame(left->id()), (PixelRect{0, 0, seam, screen.height}));
        ASSERT_EQ(shifting.frame(right->id()),
                  (PixelRect{seam, 0, screen.width - seam, screen.height}));
        seams.insert(seam);
        shifting.advance(hour);
    }
    EXPECT_GE(seams.size(), 5U) << "an hour's seam is seldom another's";
    shifting.conductor().stopFeatures();
    EXPECT_EQ(shifting.frame(left->id()), (PixelRect{0, 0, 960, 1080}));
    EXPECT_EQ(shifting.frame(right->id()), (PixelRect{960, 0, 960, 1080}));
}

TEST_P(Jitter, movesAWindowInTheMiddleWithoutResizingIt) {
    ShiftingDesktop shifting(GetParam(), ShiftingDesktop::shiftAndJitter);
    const PixelRect opened{400, 300, 640, 480};
    const auto window = shifting.open(opened);
    shifting.observer().forget();
    for (int passed = 0; passed < 4; ++passed) {
        for (int taken = 0; taken < 3; ++taken) {
            shifting.step();
            const Offset jitter = jitterNow(shifting);
            const Offset& orbit = shifting.conductor().orbit().lastShift()->offset;
            ASSERT_EQ(shifting.frame(window->id()),
                      shifted(opened, {jitter.dx + orbit.dx, jitter.dy + orbit.dy}));
        }
        shifting.advance(hour);
    }
    EXPECT_THAT(shifting.otherThanMoves(window->id()), IsEmpty());
}

TEST_P(Jitter, neverResizesATerminalInTheMiddle) {
    ShiftingDesktop shifting(GetParam(), ShiftingDesktop::shiftAndJitter);
    const auto terminal = shifting.desktop().openProgram(
        {"xterm", "-geometry", "70x20+500+300", "-e", "exec sleep 1000"}, "XTerm");
    const PixelRect home = shifting.frame(terminal.window);
    shifting.observer().forget();
    for (int taken = 0; taken < 20; ++taken) {
        // A ring and more, over several hours.
        shifting.advance(hour / 4);
        const Offset jitter = jitterNow(shifting);
        const Offset& orbit = shifting.conductor().orbit().lastShift()->offset;
        ASSERT_EQ(shifting.frame(terminal.window),
                  shifted(home, {jitter.dx + orbit.dx, jitter.dy + orbit.dy}));
    }
    EXPECT_THAT(shifting.otherThanMoves(terminal.window), IsEmpty());
    shifting.conductor().stopFeatures();
    EXPECT_EQ(shifting.frame(terminal.window), home);
}

// The only windows that are resized. A terminal follows in whole columns, where the window manager
// heeds them, and comes back from each of them.
TEST_P(Jitter, resizesATerminalOnTheBorderByItsInnerEdgeAlone) {
    ShiftingDesktop shifting(GetParam(), ShiftingDesktop::jitterOnly);
    const auto terminal = shifting.desktop().openProgram(
        {"xterm", "-geometry", "70x20+0+300", "-e", "exec sleep 1000"}, "XTerm");
    const PixelRect home = shifting.frame(terminal.window);
    ASSERT_EQ(home.x, 0);
    constexpr int column = 6;  // Of the terminal's own font, pixels.
    for (int passed = 0; passed < 12; ++passed) {
        shifting.step();
        const Offset jitter = jitterNow(shifting);
        const PixelRect now = shifting.frame(terminal.window);
        EXPECT_EQ(now.x, home.x);
        EXPECT_EQ(now.y, home.y + static_cast<int>(jitter.dy));
        EXPECT_EQ(now.height, home.height);
        const int wanted = home.width + static_cast<int>(jitter.dx);
        if (GetParam() == WindowManager::Kind::xfwm4) {
            EXPECT_EQ(now.width, wanted);
        } else {
            EXPECT_LE(now.width, wanted);
            EXPECT_GT(now.width, wanted - column);
            EXPECT_EQ((home.width - now.width) % column, 0);
        }
        shifting.advance(hour - ShiftingDesktop::interval);
    }
    shifting.conductor().stopFeatures();
    EXPECT_EQ(shifting.frame(terminal.window), home);
}

INSTANTIATE_TEST_SUITE_P(Shifting, Jitter, testing::ValuesIn(WindowManager::kinds),
                         ShiftingTest::nameOf);

}  // namespace
}  // namespace lumatile::desktop
