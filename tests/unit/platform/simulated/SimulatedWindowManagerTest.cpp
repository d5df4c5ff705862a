#include "platform/simulated/SimulatedWindowManager.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"
#include "windows/AXWindow.h"

namespace lumatile {
namespace {

/// One landscape screen, one application, one window.
struct Desk : SimulatedDesktop {
    ApplicationID editor = prepare();
    WindowID window = open(editor, Rect{100, 100, 640, 480});

    AXWindow ax() { return {accessibility, SimulatedAccessibility::element(window)}; }
    SimulatedWindow& model() { return *programs.find(window); }

private:
    ApplicationID prepare() {
        plug("main", {0, 0, 1366, 768});
        return launch({.pid = 100, .applicationId = "editor"});
    }
};

TEST(SimulatedWindowManager, aFrameReadsAsItWasAskedForAndIsSeenRounded) {
    Desk desk;
    const double third = 1366.0 / 3;
    desk.ax().setFrame({third, 0, third, 768});
    EXPECT_EQ(desk.ax().frame(), (Rect{third, 0, third, 768}));
    EXPECT_EQ(desk.seen(desk.window), (Rect{455, 0, 456, 768}));
}

TEST(SimulatedWindowManager, thirdsMeetWithoutAGap) {
    Desk desk;
    const double third = 1366.0 / 3;
    double edge = 0;
    for (int i = 0; i < 3; ++i) {
        desk.ax().setFrame({i * third, 0, third, 768});
        EXPECT_EQ(desk.seen(desk.window)->minX(), edge);
        edge = desk.seen(desk.window)->maxX();
    }
    EXPECT_EQ(edge, 1366);
}

TEST(SimulatedWindowManager, aThousandMovesOfOnePixelOutAndBackLeaveNoDrift) {
    Desk desk;
    const double third = 1366.0 / 3;
    desk.ax().setFrame({third, 0, third, 768});
    const auto seen = desk.seen(desk.window);
    for (int i = 0; i < 1000; ++i) {
        const Rect frame = *desk.ax().frame();
        desk.ax().setPosition({frame.x + (i % 2 == 0 ? 1 : -1), frame.y});
        EXPECT_EQ(desk.seen(desk.window)->width, seen->width);
    }
    EXPECT_EQ(desk.seen(desk.window), seen);
}

TEST(SimulatedWindowManager, aMinimumSizeIsKeptAndTheCornerIsExact) {
    Desk desk;
    desk.model().traits.minimumContent = {500, 400};
    desk.model().traits.decorations = {5, 5, 29, 5};
    desk.ax().setFrame({10, 20, 300, 200});
    EXPECT_EQ(desk.ax().frame(), (Rect{10, 20, 510, 434}));
}

TEST(SimulatedWindowManager, sizeIncrementsCountTheContentFromItsBase) {
    Desk desk;
    desk.model().traits.increment = {7, 13};
    desk.model().traits.baseContent = {4, 6};
    desk.model().traits.decorations = {1, 1, 20, 5};
    desk.ax().setFrame({0, 0, 683, 768});
    // (683 - 2 - 4) / 7 = 96.7 and (768 - 25 - 6) / 13 = 56.7
    EXPECT_EQ(desk.ax().frame(), (Rect{0, 0, 96 * 7 + 4 + 2, 56 * 13 + 6 + 25}));
    desk.windowManager.policy.honoursIncrements = false;
    desk.ax().setFrame({0, 0, 683, 768});
    EXPECT_EQ(desk.ax().frame(), (Rect{0, 0, 683, 768}));
}

TEST(SimulatedWindowManager, aRefusedMoveFailsAtOnce) {
    Desk desk;
    desk.windowManager.policy.refusesMoves = true;
    EXPECT_FALSE(
        desk.accessibility.write(desk.ax().element(), AttributeName::position, Point{0, 0}));
    EXPECT_EQ(desk.frame(desk.window), (Rect{100, 100, 640, 480}));
    EXPECT_EQ(desk.clock.sinceStart(), 0);
}

TEST(SimulatedWindowManager, aLateAnswerIsWaitedFor) {
    Desk desk;
    desk.windowManager.policy.latencySeconds = 0.02;
    EXPECT_TRUE(
        desk.accessibility.write(desk.ax().element(), AttributeName::position, Point{0, 0}));
    EXPECT_EQ(desk.clock.sinceStart(), SimulatedClock::fromSeconds(0.02));
    EXPECT_EQ(desk.frame(desk.window), (Rect{0, 0, 640, 480}));
}

TEST(SimulatedWindowManager, aWriteThatChangesNothingReturnsAtOnce) {
    Desk desk;
    desk.windowManager.policy.latencySeconds = 0.02;
    EXPECT_TRUE(
        desk.accessibility.write(desk.ax().element(), AttributeName::position, Point{100, 100}));
    EXPECT_EQ(desk.clock.sinceStart(), 0);
}

TEST(SimulatedWindowManager, anAnswerAfterTheTimeoutStillMovesTheWindow) {
    Desk desk;
    desk.windowManager.policy.latencySeconds = 1;
    desk.ax().setFrame({0, 0, 300, 300});
    // The first write waited for its time-out, the others not at all.
    EXPECT_EQ(desk.clock.sinceStart(), SimulatedClock::fromSeconds(0.25));
    EXPECT_EQ(desk.frame(desk.window), (Rect{100, 100, 640, 480}));
    desk.advance(1);
    EXPECT_EQ(desk.frame(desk.window), (Rect{0, 0, 300, 300}));
    EXPECT_FALSE(desk.model().owesAnswer);
}

TEST(SimulatedWindowManager, anUnansweredWriteIsNotWaitedForTwice) {
    Desk desk;
    desk.windowManager.policy.leavesUnanswered = true;
    desk.ax().setPosition({0, 0});
    desk.ax().setPosition({0, 0});
    EXPECT_EQ(desk.clock.sinceStart(), SimulatedClock::fromSeconds(0.25));
    desk.windowManager.policy.leavesUnanswered = false;
    desk.ax().setPosition({0, 0});
    EXPECT_EQ(desk.frame(desk.window), (Rect{0, 0, 640, 480}));
}

TEST(SimulatedWindowManager, aWindowMayCloseBeforeTheAnswer) {
    Desk desk;
    desk.windowManager.policy.latencySeconds = 0.1;
    desk.clock.happen(SimulatedClock::fromSeconds(0.05), [&] { desk.programs.close(desk.window); });
    EXPECT_FALSE(
        desk.accessibility.write(desk.ax().element(), AttributeName::position, Point{0, 0}));
    EXPECT_FALSE(desk.isOpen(desk.window));
}

TEST(SimulatedWindowManager, aFullScreenWindowIsNeverMoved) {
    Desk desk;
    desk.model().traits.isFullScreen = true;
    desk.ax().setFrame({0, 0, 300, 300});
    EXPECT_EQ(desk.frame(desk.window), (Rect{100, 100, 640, 480}));
}

TEST(SimulatedWindowManager, aWriteTakesAWindowOutOfItsMaximizedState) {
    Desk desk;
    desk.model().traits.isMaximized = true;
    EXPECT_EQ(desk.accessibility.isSettable(desk.ax().element(), AttributeName::position), false);
    desk.ax().setFrame({0, 0, 300, 300});
    EXPECT_EQ(desk.frame(desk.window), (Rect{0, 0, 300, 300}));
    EXPECT_EQ(desk.accessibility.isSettable(desk.ax().element(), AttributeName::position), true);
}

TEST(SimulatedWindowManager, keepingWindowsWholeNeedsTheSecondPositionWrite) {
    Desk desk;
    desk.windowManager.policy.keepsWindowsWhole = true;
    const Element element = desk.ax().element();
    desk.accessibility.write(element, AttributeName::position, Point{1066, 0});
    desk.accessibility.write(element, AttributeName::size, Size{300, 300});
    EXPECT_EQ(desk.frame(desk.window), (Rect{1366 - 640, 0, 300, 300}));
    desk.accessibility.write(element, AttributeName::position, Point{1066, 0});
    EXPECT_EQ(desk.frame(desk.window), (Rect{1066, 0, 300, 300}));
}

TEST(SimulatedWindowManager, assistiveAnimationGarblesAPlacingUnlessItIsSwitchedOff) {
    Desk desk;
    desk.programs.find(desk.editor)->traits.enhancedUserInterface = true;
    const Element element = desk.ax().element();
    for (const auto& [attribute, value] :
         {std::pair{AttributeName::position, AttributeValue(Point{0, 0})},
          std::pair{AttributeName::size, AttributeValue(Size{300, 300})},
          std::pair{AttributeName::position, AttributeValue(Point{0, 0})}}) {
        EXPECT_TRUE(desk.accessibility.write(element, attribute, value));
    }
    desk.advance(1);
    EXPECT_EQ(desk.frame(desk.window), (Rect{0, 0, 640, 480}));

    desk.ax().setFrame({50, 50, 300, 300});
    EXPECT_EQ(desk.frame(desk.window), (Rect{50, 50, 300, 300}));
    EXPECT_EQ(desk.programs.find(desk.editor)->traits.enhancedUserInterface, true);
}

TEST(SimulatedWindowManager, windowsOfAnUnpluggedScreenComeToThePrimaryOne) {
    Desk desk;
    desk.screens.addPanel("main", ScreenEdge::top, 25);
    desk.plug("second", {1366, 0, 1080, 1920});
    desk.dragTo(desk.window, {1500, 500, 640, 480});
    desk.unplug("second");
    EXPECT_EQ(desk.frame(desk.window), (Rect{0, 25, 640, 480}));

    desk.windowManager.policy.rescuesStranded = false;
    desk.plug("second", {1366, 0, 1080, 1920});
    desk.dragTo(desk.window, {1500, 500, 640, 480});
    desk.unplug("second");
    EXPECT_EQ(desk.frame(desk.window), (Rect{1500, 500, 640, 480}));
}

TEST(SimulatedWindowManager, aWindowDraggedByTheUserLiesOnWholePixelsWithinItsSizeRule) {
    Desk desk;
    desk.model().traits.minimumContent = {200, 100};
    desk.dragTo(desk.window, {10.4, 20.6, 100, 100});
    EXPECT_EQ(desk.frame(desk.window), (Rect{10, 21, 200, 100}));
}

RC_GTEST_PROP(SimulatedGeometry, roundingMovesAnEdgeByAtMostHalfAPixelAndNeighboursMeet, ()) {
    const auto number = [] { return *rc::gen::inRange(-4'000'000, 4'000'000) / 1000.0; };
    const Rect left{number(), number(), std::abs(number()), std::abs(number())};
    const Rect right{left.maxX(), left.y, std::abs(number()), left.height};
    const Rect roundedLeft = SimulatedGeometry::rounded(left);
    RC_ASSERT(std::abs(roundedLeft.minX() - left.minX()) <= 0.5);
    RC_ASSERT(std::abs(roundedLeft.maxY() - left.maxY()) <= 0.5);
    RC_ASSERT(roundedLeft.maxX() == SimulatedGeometry::rounded(right).minX());
}

}  // namespace
}  // namespace lumatile
