// The hour's edge jitter on real windows, terminals among them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "tests/desktop/support/shifting/ShiftingDesk.h"

namespace lumatile::desktop {
namespace {

using testing::IsEmpty;

constexpr double hour = 3600;
constexpr double tolerance = 6;
const PixelRect screen{0, 0, 1920, 1080};

class Jitter : public ShiftingTest {
protected:
    /// The hour's offset at this moment.
    static Offset jitterNow(ShiftingDesk& desk) {
        return JitterPolicy{tolerance, hour}.offset(desk.clock().wallSeconds());
    }
};

TEST_P(Jitter, movesTheSeamOfTwoHalvesWithTheHour) {
    const auto desk = start({.oledSettings = ShiftingDesk::jitterOnly});
    const auto left = desk->open({100, 100, 500, 400});
    desk->run("command.left");
    const auto right = desk->open({900, 100, 500, 400});
    desk->run("command.right");
    std::set<int> seams;
    for (int passed = 0; passed < 12; ++passed) {
        const int seam = screen.width / 2 + static_cast<int>(jitterNow(*desk).dx);
        ASSERT_EQ(left->frame(), (PixelRect{0, 0, seam, screen.height}));
        ASSERT_EQ(right->frame(), (PixelRect{seam, 0, screen.width - seam, screen.height}));
        seams.insert(seam);
        desk->advance(hour);
    }
    EXPECT_GE(seams.size(), 5U) << "an hour's seam is seldom another's";
    desk->conductor().stopFeatures();
    EXPECT_EQ(left->frame(), (PixelRect{0, 0, 960, 1080}));
    EXPECT_EQ(right->frame(), (PixelRect{960, 0, 960, 1080}));
}

TEST_P(Jitter, movesAWindowInTheMiddleWithoutResizingIt) {
    const auto desk = start({.oledSettings = ShiftingDesk::shiftAndJitter});
    const PixelRect opened{400, 300, 640, 480};
    const auto window = desk->open(opened);
    desk->forget();
    for (int passed = 0; passed < 4; ++passed) {
        for (int taken = 0; taken < 3; ++taken) {
            desk->step();
            const Offset jitter = jitterNow(*desk);
            const Offset& orbit = desk->conductor().orbit().lastShift()->offset;
            ASSERT_EQ(window->frame(),
                      shifted(opened, {jitter.dx + orbit.dx, jitter.dy + orbit.dy}));
        }
        desk->advance(hour);
    }
    EXPECT_THAT(window->otherThanMoves(), IsEmpty());
}

TEST_P(Jitter, neverResizesATerminalInTheMiddle) {
    const auto desk = start({.oledSettings = ShiftingDesk::shiftAndJitter});
    const auto terminal = desk->openTerminal(500, 300);
    const PixelRect home = terminal->frame();
    desk->forget();
    for (int taken = 0; taken < 20; ++taken) {
        // A ring and more, over several hours.
        desk->advance(hour / 4);
        const Offset jitter = jitterNow(*desk);
        const Offset& orbit = desk->conductor().orbit().lastShift()->offset;
        ASSERT_EQ(terminal->frame(), shifted(home, {jitter.dx + orbit.dx, jitter.dy + orbit.dy}));
    }
    EXPECT_THAT(terminal->otherThanMoves(), IsEmpty());
    desk->conductor().stopFeatures();
    EXPECT_EQ(terminal->frame(), home);
}

// The only windows that are resized. A terminal follows in whole columns, where the window manager
// heeds them, and comes back from each of them.
TEST_P(Jitter, resizesATerminalOnTheBorderByItsInnerEdgeAlone) {
    const auto desk = start({.oledSettings = ShiftingDesk::jitterOnly});
    const auto terminal = desk->openTerminal(0, 300);
    const PixelRect home = terminal->frame();
    ASSERT_EQ(home.x, 0);
    for (int passed = 0; passed < 12; ++passed) {
        desk->step();
        const Offset jitter = jitterNow(*desk);
        const PixelRect now = terminal->frame();
        EXPECT_EQ(now.x, home.x);
        EXPECT_EQ(now.y, home.y + static_cast<int>(jitter.dy));
        EXPECT_EQ(now.height, home.height);
        const int wanted = home.width + static_cast<int>(jitter.dx);
        if (!desk->heedsSteps()) {
            EXPECT_EQ(now.width, wanted);
        } else {
            EXPECT_LE(now.width, wanted);
            EXPECT_GT(now.width, wanted - ShiftingDesk::terminalColumn);
            EXPECT_EQ((home.width - now.width) % ShiftingDesk::terminalColumn, 0);
        }
        desk->advance(hour - ShiftingDesk::interval);
    }
    desk->conductor().stopFeatures();
    EXPECT_EQ(terminal->frame(), home);
}

INSTANTIATE_TEST_SUITE_P(Shifting, Jitter, testing::ValuesIn(shiftingKinds()),
                         ShiftingTest::nameOf);

}  // namespace
}  // namespace lumatile::desktop
