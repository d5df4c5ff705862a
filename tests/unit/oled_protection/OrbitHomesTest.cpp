#include <gtest/gtest.h>

#include "tests/unit/oled_protection/OrbitStage.h"

// Which place a window has as its home, and how it returns there.

namespace lumatile {
namespace {

using namespace orbit_stage;

TEST(OrbitNoteSnapped, theGivenRectangleBecomesHome) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window});
    window->current = {0, 0, 962, 1080};
    orbit.noteSnapped(window, leftHalf);
    EXPECT_EQ(homeOf(orbit, *window), leftHalf);
    EXPECT_EQ(lastAppliedOf(orbit, *window), (Rect{0, 0, 962, 1080}));
    EXPECT_EQ(window->writes(), 0);
    orbit.step(1);
    EXPECT_EQ(window->current, leftHalf.offsetBy(-1, -2));
}

TEST(OrbitNoteSnapped, withoutARectangleThePresentFrameBecomesHome) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window});
    window->current = {7, 8, 900, 600};
    orbit.noteSnapped(window);
    EXPECT_EQ(homeOf(orbit, *window), (Rect{7, 8, 900, 600}));
    EXPECT_EQ(lastAppliedOf(orbit, *window), (Rect{7, 8, 900, 600}));
}

TEST(OrbitNoteSnapped, anUntrackedWindowIsAddedAlsoWhileProtectionIsOff) {
    OrbitScheduler orbit(orbitOff);
    const auto window = makeWindow();
    orbit.noteSnapped(window, leftHalf);
    EXPECT_EQ(orbit.trackedCount(), 1U);
    EXPECT_EQ(homeOf(orbit, *window), leftHalf);
}

TEST(OrbitNoteSnapped, aWindowThatCannotBeReadChangesNothing) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window});
    window->isReadable = false;
    orbit.noteSnapped(window, leftHalf);
    EXPECT_EQ(homeOf(orbit, *window), inTheMiddle);
    const auto other = makeWindow(inTheMiddle, 2);
    other->isReadable = false;
    orbit.noteSnapped(other, leftHalf);
    orbit.noteSnapped(nullptr, leftHalf);
    EXPECT_EQ(orbit.trackedCount(), 1U);
}

TEST(OrbitRestoreHomes, movesWindowsBackAndStartsThePathOver) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window});
    for (int i = 0; i < 5; ++i) {
        orbit.step(i);
    }
    window->resetCounts();
    orbit.restoreHomes();
    EXPECT_EQ(window->current, inTheMiddle);
    EXPECT_EQ(lastAppliedOf(orbit, *window), inTheMiddle);
    EXPECT_EQ(window->positionWrites, 1);
    EXPECT_EQ(window->frameWrites, 0);
    EXPECT_EQ(window->reads, 2);
    EXPECT_EQ(orbit.stepIndex(), 0);
    EXPECT_EQ(orbit.trackedCount(), 1U);
}

TEST(OrbitRestoreHomes, writesTheWholeFrameUnlessTheSizeIsExactlyTheHomes) {
    OrbitScheduler orbit({}, hourly);
    orbit.setBounds([](const Rect&) { return area; });
    const auto window = makeWindow(leftHalf);
    orbit.sync({window});
    orbit.step(jitteredTime());
    window->resetCounts();
    orbit.restoreHomes();
    EXPECT_EQ(window->current, leftHalf);
    EXPECT_EQ(window->frameWrites, 1);

    orbit.step(0);
    window->current = leftHalf.offsetBy(1, 1);
    window->current.width += 0.125;
    orbit.noteSnapped(window, leftHalf);
    window->resetCounts();
    orbit.restoreHomes();
    EXPECT_EQ(window->frameWrites, 1);
    EXPECT_EQ(window->current, leftHalf);
}

TEST(OrbitRestoreHomes, windowsThatTheUserMovedStay) {
    OrbitScheduler orbit;
    const auto moved = makeWindow(inTheMiddle, 1);
    const auto resized = makeWindow(inTheMiddle, 2);
    const auto nudged = makeWindow(inTheMiddle, 3);
    orbit.sync({moved, resized, nudged});
    orbit.step(1);
    moved->current.x += 1.6;
    resized->current.height -= 40;
    nudged->current.x += 1.5;
    const Rect movedTo = moved->current;
    const Rect resizedTo = resized->current;
    orbit.restoreHomes();
    EXPECT_EQ(moved->current, movedTo);
    EXPECT_EQ(resized->current, resizedTo);
    EXPECT_EQ(nudged->current, inTheMiddle);
}

TEST(OrbitRestoreHomes, windowsWithinHalfAPixelOfHomeAreNotWritten) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window});
    window->current = inTheMiddle.offsetBy(0.5, -0.5);
    orbit.restoreHomes();
    EXPECT_EQ(window->writes(), 0);
    window->current = inTheMiddle.offsetBy(0.625, 0);
    orbit.restoreHomes();
    EXPECT_EQ(window->writes(), 1);
    EXPECT_EQ(window->current, inTheMiddle);
}

TEST(OrbitRestoreHomes, aWindowThatCannotBeReadIsLeftAndStaysTracked) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window});
    orbit.step(1);
    window->isReadable = false;
    window->resetCounts();
    orbit.restoreHomes();
    EXPECT_EQ(window->writes(), 0);
    EXPECT_EQ(orbit.trackedCount(), 1U);
}

TEST(OrbitRestoreHomes, whatIsReadBackIsRememberedOrElseTheHome) {
    OrbitScheduler orbit;
    const auto stubborn = makeWindow(inTheMiddle, 1);
    const auto vanishing = makeWindow(inTheMiddle, 2);
    orbit.sync({stubborn, vanishing});
    orbit.step(1);
    stubborn->refusesMoves = true;
    vanishing->onWrite = [&vanishing] { vanishing->isReadable = false; };
    orbit.restoreHomes();
    EXPECT_EQ(lastAppliedOf(orbit, *stubborn), inTheMiddle.offsetBy(-1, -2));
    EXPECT_EQ(lastAppliedOf(orbit, *vanishing), inTheMiddle);
    vanishing->onWrite = nullptr;
}

TEST(OrbitStop, returnsWindowsHomeAndForgetsThem) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window});
    orbit.step(1);
    orbit.stop();
    EXPECT_EQ(window->current, inTheMiddle);
    EXPECT_EQ(orbit.trackedCount(), 0U);
    EXPECT_EQ(orbit.stepIndex(), 0);
}

TEST(OrbitStop, leavesAWindowThatTheUserMovedAfterTheLastStep) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window});
    orbit.step(1);
    window->current = {50, 60, 700, 400};
    window->resetCounts();
    orbit.stop();
    EXPECT_EQ(window->current, (Rect{50, 60, 700, 400}));
    EXPECT_EQ(window->writes(), 0);
    EXPECT_EQ(orbit.trackedCount(), 0U);
}

}  // namespace
}  // namespace lumatile
