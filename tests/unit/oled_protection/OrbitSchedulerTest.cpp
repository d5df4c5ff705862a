#include "oled_protection/OrbitScheduler.h"

#include <memory>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

#include "tests/unit/oled_protection/FakeWindow.h"
#include "tests/unit/oled_protection/JitterClock.h"

namespace lumatile {
namespace {

using Windows = std::vector<std::shared_ptr<WindowControlling>>;

constexpr Rect area{0, 0, 1920, 1080};
constexpr Rect inTheMiddle{500, 300, 700, 400};
constexpr Rect leftHalf{0, 0, 960, 1080};
constexpr OrbitConfig orbitOff{2, 1, false};
constexpr JitterPolicy hourly{3, 3600};

std::shared_ptr<FakeWindow> makeWindow(const Rect& frame = inTheMiddle, int id = 1) {
    return std::make_shared<FakeWindow>(id, frame);
}

/// Time of an hour in which the jitter is (+2, −1).
double jitteredTime() {
    static const std::optional<double> time = timeOfOffset(hourly, {2, -1});
    EXPECT_TRUE(time.has_value());
    return time.value_or(0);
}

Rect homeOf(const OrbitScheduler& orbit, const FakeWindow& window) {
    const std::optional<OrbitScheduler::Tracked> entry = orbit.tracked(window.key());
    EXPECT_TRUE(entry.has_value());
    return entry ? entry->home : Rect{-1, -1, -1, -1};
}

Rect lastAppliedOf(const OrbitScheduler& orbit, const FakeWindow& window) {
    const std::optional<OrbitScheduler::Tracked> entry = orbit.tracked(window.key());
    EXPECT_TRUE(entry.has_value());
    return entry ? entry->lastApplied : Rect{-1, -1, -1, -1};
}

TEST(OrbitScheduler, startsWithTheDefaultSquareAndNothingTracked) {
    const OrbitScheduler orbit;
    EXPECT_EQ(orbit.config(), (OrbitConfig{2, 1, true}));
    EXPECT_EQ(orbit.jitter(), std::nullopt);
    EXPECT_EQ(orbit.path(), OrbitScheduler::makePath(2, 1));
    EXPECT_EQ(orbit.trackedCount(), 0U);
    EXPECT_EQ(orbit.lastShift(), std::nullopt);
    EXPECT_EQ(orbit.stepIndex(), 0);
    EXPECT_EQ(OrbitScheduler::outsideMoveTolerance, 1.5);
}

TEST(OrbitSync, newWindowsAreAtHomeWhereTheyAre) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window});
    EXPECT_EQ(orbit.trackedCount(), 1U);
    EXPECT_EQ(homeOf(orbit, *window), inTheMiddle);
    EXPECT_EQ(lastAppliedOf(orbit, *window), inTheMiddle);
    EXPECT_EQ(window->writes(), 0);
}

TEST(OrbitSync, windowsWhoseFrameCannotBeReadAreSkipped) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    window->isReadable = false;
    orbit.sync({window});
    EXPECT_EQ(orbit.trackedCount(), 0U);
}

TEST(OrbitSync, aTrackedWindowKeepsItsHomeAndGetsTheFreshHandle) {
    OrbitScheduler orbit;
    const auto first = makeWindow();
    orbit.sync({first});
    const auto second = makeWindow({0, 0, 10, 10});
    orbit.sync({second});
    ASSERT_EQ(orbit.trackedCount(), 1U);
    EXPECT_EQ(homeOf(orbit, *second), inTheMiddle);
    EXPECT_EQ(lastAppliedOf(orbit, *second), inTheMiddle);
    EXPECT_EQ(orbit.tracked(second->key())->window, second);
    EXPECT_EQ(second->reads, 0);
}

TEST(OrbitSync, aTrackedWindowThatCannotBeReadStaysUntilTheStep) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window});
    window->isReadable = false;
    orbit.sync({window});
    EXPECT_EQ(orbit.trackedCount(), 1U);
    orbit.step(0);
    EXPECT_EQ(orbit.trackedCount(), 0U);
}

TEST(OrbitSync, windowsThatAreNotGivenAreForgotten) {
    OrbitScheduler orbit;
    const auto a = makeWindow(inTheMiddle, 1);
    const auto b = makeWindow(inTheMiddle, 2);
    const auto c = makeWindow(inTheMiddle, 3);
    orbit.sync({a, b, c});
    orbit.sync({b});
    EXPECT_EQ(orbit.trackedCount(), 1U);
    EXPECT_TRUE(orbit.tracked(b->key()).has_value());
    orbit.sync({});
    EXPECT_EQ(orbit.trackedCount(), 0U);
    EXPECT_EQ(a->writes() + b->writes() + c->writes(), 0);
}

TEST(OrbitSync, aWindowGivenTwiceIsTrackedOnceAndNoWindowIsIgnored) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window, nullptr, window});
    EXPECT_EQ(orbit.trackedCount(), 1U);
}

TEST(OrbitStep, movesByThePathStartingWithItsSecondPoint) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window});
    orbit.step(1);
    EXPECT_EQ(orbit.stepIndex(), 1);
    EXPECT_EQ(window->current, inTheMiddle.offsetBy(-1, -2));
    orbit.step(2);
    EXPECT_EQ(window->current, inTheMiddle.offsetBy(0, -2));
}

TEST(OrbitStep, everyStepOfOneRoundIsThePathAndTheIndexWraps) {
    OrbitScheduler orbit(OrbitConfig{1, 1, true});
    const auto window = makeWindow();
    orbit.sync({window});
    ASSERT_EQ(orbit.path().size(), 8U);
    for (std::size_t i = 1; i <= 16; ++i) {
        orbit.step(static_cast<double>(i));
        const Offset& offset = orbit.path()[i % 8];
        EXPECT_EQ(window->current, inTheMiddle.offsetBy(offset.dx, offset.dy)) << i;
        if (i == 8) {
            EXPECT_EQ(orbit.stepIndex(), 0);
            EXPECT_EQ(window->current, inTheMiddle.offsetBy(-1, -1));
        }
    }
    EXPECT_EQ(homeOf(orbit, *window), inTheMiddle);
}

TEST(OrbitStep, allWindowsShareTheOffset) {
    OrbitScheduler orbit;
    const auto a = makeWindow({10, 20, 300, 200}, 1);
    const auto b = makeWindow({900.25, 70.5, 300, 200}, 2);
    const auto c = makeWindow({-50, 700, 30, 20}, 3);
    orbit.sync({a, b, c});
    orbit.step(5);
    EXPECT_EQ(a->current, (Rect{9, 18, 300, 200}));
    EXPECT_EQ(b->current, (Rect{899.25, 68.5, 300, 200}));
    EXPECT_EQ(c->current, (Rect{-51, 698, 30, 20}));
}

TEST(OrbitStep, recordsTheShift) {
    OrbitScheduler orbit;
    orbit.sync({makeWindow()});
    orbit.step(1234.5);
    EXPECT_EQ(orbit.lastShift(), (OrbitShift{{-1, -2}, 1234.5}));
}

TEST(OrbitStep, doesNothingWhileOrbitAndJitterAreOff) {
    OrbitScheduler orbit(orbitOff);
    const auto window = makeWindow();
    orbit.sync({window});
    window->resetCounts();
    orbit.step(1);
    EXPECT_EQ(window->reads, 0);
    EXPECT_EQ(window->writes(), 0);
    EXPECT_EQ(orbit.lastShift(), std::nullopt);
}

TEST(OrbitStep, doesNotAdvanceWhileNothingIsTracked) {
    OrbitScheduler orbit;
    orbit.step(1);
    EXPECT_EQ(orbit.stepIndex(), 0);
    EXPECT_EQ(orbit.lastShift(), std::nullopt);
}

TEST(OrbitStep, costsOneReadOneWriteAndOneReadBackAWindow) {
    OrbitScheduler orbit({}, hourly);
    orbit.setBounds([](const Rect&) { return area; });
    const auto a = makeWindow(inTheMiddle, 1);
    const auto b = makeWindow(leftHalf, 2);
    orbit.sync({a, b});
    for (int i = 0; i < 40; ++i) {
        a->resetCounts();
        b->resetCounts();
        orbit.step(jitteredTime() + i * 3600);
        for (const auto& window : {a, b}) {
            EXPECT_LE(window->writes(), 1);
            EXPECT_LE(window->reads, 1 + window->writes());
        }
    }
}

TEST(OrbitStep, onlyMovesWhereTheSizeStaysTheSame) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window});
    orbit.step(1);
    EXPECT_EQ(window->positionWrites, 1);
    EXPECT_EQ(window->frameWrites, 0);
}

TEST(OrbitStep, aWindowThatTheUserDraggedStaysAndItsPlaceBecomesHome) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window});
    orbit.step(1);
    window->current = window->current.offsetBy(10, 0);
    const Rect dragged = window->current;
    window->resetCounts();
    orbit.step(2);
    EXPECT_EQ(window->current, dragged);
    EXPECT_EQ(window->writes(), 0);
    EXPECT_EQ(homeOf(orbit, *window), dragged);
    EXPECT_EQ(lastAppliedOf(orbit, *window), dragged);
    EXPECT_EQ(orbit.lastShift(), (OrbitShift{{-1, -2}, 1}));
    orbit.step(3);
    EXPECT_EQ(orbit.stepIndex(), 3);
    EXPECT_EQ(window->current, dragged.offsetBy(1, -2));
}

TEST(OrbitStep, movesOfUpToOneAndAHalfPixelsAreNotFromOutside) {
    struct Case {
        Rect change;
        bool isFromOutside = false;
    };
    for (const Case& c : {
             Case{{1.5, 0, 0, 0}, false},
             Case{{-1.5, 1.5, 0, 0}, false},
             Case{{0, 0, 1.5, -1.5}, false},
             Case{{1.6, 0, 0, 0}, true},
             Case{{0, -1.6, 0, 0}, true},
             Case{{0, 0, 1.6, 0}, true},
             Case{{0, 0, 0, -1.6}, true},
         }) {
        OrbitScheduler orbit;
        const auto window = makeWindow();
        orbit.sync({window});
        window->current = {inTheMiddle.x + c.change.x, inTheMiddle.y + c.change.y,
                           inTheMiddle.width + c.change.width,
                           inTheMiddle.height + c.change.height};
        const Rect moved = window->current;
        orbit.step(1);
        if (c.isFromOutside) {
            EXPECT_EQ(homeOf(orbit, *window), moved) << c.change.x;
            EXPECT_EQ(window->current, moved);
        } else {
            EXPECT_EQ(homeOf(orbit, *window), inTheMiddle) << c.change.x;
            EXPECT_EQ(window->current, inTheMiddle.offsetBy(-1, -2));
        }
    }
}

TEST(OrbitStep, aWindowThatCannotBeReadIsDropped) {
    OrbitScheduler orbit;
    const auto gone = makeWindow(inTheMiddle, 1);
    const auto kept = makeWindow(inTheMiddle, 2);
    orbit.sync({gone, kept});
    gone->isReadable = false;
    orbit.step(1);
    EXPECT_EQ(orbit.trackedCount(), 1U);
    EXPECT_EQ(gone->writes(), 0);
    EXPECT_EQ(kept->writes(), 1);
}

TEST(OrbitStep, aWindowThatVanishesAfterItsWriteCountsAsPlaced) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window});
    window->onWrite = [&window] { window->isReadable = false; };
    orbit.step(1);
    EXPECT_EQ(lastAppliedOf(orbit, *window), inTheMiddle.offsetBy(-1, -2));
    orbit.step(2);
    EXPECT_EQ(orbit.trackedCount(), 0U);
    window->onWrite = nullptr;
}

TEST(OrbitStep, aRefusedMoveIsNotRetriedAndIsNotTakenForAMoveFromOutside) {
    OrbitScheduler orbit(OrbitConfig{20, 5, true});
    const auto window = makeWindow();
    window->refusesMoves = true;
    orbit.sync({window});
    orbit.step(1);
    EXPECT_EQ(window->writes(), 1);
    EXPECT_EQ(lastAppliedOf(orbit, *window), inTheMiddle);
    window->refusesMoves = false;
    orbit.step(2);
    EXPECT_EQ(homeOf(orbit, *window), inTheMiddle);
    EXPECT_EQ(window->current, inTheMiddle.offsetBy(-10, -20));
}

TEST(OrbitStep, windowsAtTheirTargetAreNotWritten) {
    OrbitScheduler orbit(orbitOff, hourly);
    orbit.setBounds([](const Rect&) { return area; });
    const auto window = makeWindow(leftHalf);
    orbit.sync({window});
    orbit.step(jitteredTime());
    EXPECT_EQ(window->current, (Rect{0, 0, 962, 1080}));
    const std::optional<OrbitShift> shift = orbit.lastShift();
    EXPECT_EQ(shift, (OrbitShift{{0, 0}, jitteredTime()}));
    window->resetCounts();
    orbit.step(jitteredTime() + 1);
    EXPECT_EQ(window->writes(), 0);
    EXPECT_EQ(window->reads, 1);
    EXPECT_EQ(orbit.lastShift(), shift);
}

TEST(OrbitStep, aTargetHalfAPixelAwayIsNotWritten) {
    OrbitScheduler orbit(orbitOff, JitterPolicy{0, 3600});
    const auto window = makeWindow();
    orbit.sync({window});
    window->current = {inTheMiddle.x + 0.5, inTheMiddle.y - 0.5, inTheMiddle.width - 0.5,
                       inTheMiddle.height + 0.5};
    orbit.step(1);
    EXPECT_EQ(window->writes(), 0);
    window->current.x = inTheMiddle.x + 0.625;
    orbit.step(2);
    EXPECT_EQ(window->writes(), 1);
    EXPECT_EQ(window->current, inTheMiddle);
}

TEST(OrbitStep, aSizeHalfAPixelOffIsWrittenAlongWithThePlace) {
    for (const Size& off : {Size{0.5, 0}, Size{0, 0.5}, Size{-0.5, 0}, Size{0, -0.5}}) {
        OrbitScheduler orbit;
        const auto window = makeWindow();
        orbit.sync({window});
        window->current.width += off.width;
        window->current.height += off.height;
        orbit.step(1);
        EXPECT_EQ(window->frameWrites, 1) << off.width << " " << off.height;
        EXPECT_EQ(window->current, inTheMiddle.offsetBy(-1, -2));
    }
}

TEST(OrbitStep, aSizeLessThanHalfAPixelOffIsLeftToTheWindow) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window});
    window->current.width += 0.375;
    orbit.step(1);
    EXPECT_EQ(window->positionWrites, 1);
    EXPECT_EQ(window->frameWrites, 0);
}

TEST(OrbitStep, jitterAloneDoesNotAdvanceThePath) {
    OrbitScheduler orbit(orbitOff, hourly);
    orbit.setBounds([](const Rect&) { return area; });
    const auto window = makeWindow();
    orbit.sync({window});
    orbit.step(jitteredTime());
    EXPECT_EQ(orbit.stepIndex(), 0);
    EXPECT_EQ(window->current, inTheMiddle.offsetBy(2, -1));
    EXPECT_EQ(homeOf(orbit, *window), inTheMiddle);
}

TEST(OrbitStep, orbitAndJitterAddUp) {
    OrbitScheduler orbit({}, hourly);
    orbit.setBounds([](const Rect&) { return area; });
    const auto window = makeWindow(leftHalf);
    orbit.sync({window});
    orbit.step(jitteredTime());
    EXPECT_EQ(window->current, (Rect{-1, -2, 962, 1080}));
    EXPECT_EQ(window->frameWrites, 1);
    window->resetCounts();
    orbit.step(jitteredTime());
    EXPECT_EQ(window->current, (Rect{0, -2, 962, 1080}));
    EXPECT_EQ(window->positionWrites, 1);
    EXPECT_EQ(window->frameWrites, 0);
}

TEST(OrbitStep, withoutAKnownDisplayNoEdgeIsOnABorder) {
    OrbitScheduler unset(orbitOff, hourly);
    OrbitScheduler unknown(orbitOff, hourly);
    unknown.setBounds([](const Rect&) { return std::nullopt; });
    OrbitScheduler empty(orbitOff, hourly);
    empty.setBounds(nullptr);
    for (OrbitScheduler* orbit : {&unset, &unknown, &empty}) {
        const auto window = makeWindow(leftHalf);
        orbit->sync({window});
        orbit->step(jitteredTime());
        EXPECT_EQ(window->current, leftHalf.offsetBy(2, -1));
    }
}

TEST(OrbitStep, theDisplayIsLookedUpByTheHome) {
    OrbitScheduler orbit({}, hourly);
    std::vector<Rect> asked;
    orbit.setBounds([&asked](const Rect& frame) {
        asked.push_back(frame);
        return area;
    });
    const auto window = makeWindow();
    orbit.sync({window});
    orbit.step(jitteredTime());
    orbit.step(jitteredTime());
    EXPECT_EQ(asked, (std::vector<Rect>{inTheMiddle, inTheMiddle}));
}

TEST(OrbitStep, displaysAreNotLookedUpWithoutJitter) {
    OrbitScheduler orbit;
    bool isAsked = false;
    orbit.setBounds([&isAsked](const Rect&) {
        isAsked = true;
        return area;
    });
    orbit.sync({makeWindow()});
    orbit.step(1);
    EXPECT_FALSE(isAsked);
}

TEST(OrbitStep, aWindowThatRefusesItsSizeIsPlacedAnyway) {
    OrbitScheduler orbit({}, hourly);
    orbit.setBounds([](const Rect&) { return area; });
    const auto window = makeWindow(leftHalf);
    window->refusesResizes = true;
    orbit.sync({window});
    orbit.step(jitteredTime());
    EXPECT_EQ(window->current, (Rect{-1, -2, 960, 1080}));
    EXPECT_EQ(lastAppliedOf(orbit, *window), (Rect{-1, -2, 960, 1080}));
    EXPECT_EQ(homeOf(orbit, *window), leftHalf);
}

TEST(OrbitStep, callsThatComeBackWhileAWindowIsAskedAreHarmless) {
    // Each of these happens inside of a read or a write: everything is forgotten, the window is
    // snapped, the path becomes shorter.
    OrbitScheduler orbit(OrbitConfig{5, 1, true}, hourly);
    Windows windows;
    for (int id = 0; id < 6; ++id) {
        const auto window = makeWindow({100.0 * id, 100, 300, 200}, id);
        if (id % 2 == 0) {
            window->onRead = [&orbit] { orbit.setConfig({1, 1, true}); };
        }
        windows.push_back(window);
    }
    const auto snapped = makeWindow({700, 500, 100, 100}, 10);
    const Rect home{701, 501, 100, 100};
    snapped->onWrite = [&] { orbit.noteSnapped(snapped, home); };
    windows.push_back(snapped);
    orbit.sync(windows);
    orbit.step(1);
    EXPECT_EQ(homeOf(orbit, *snapped), home);
    EXPECT_EQ(orbit.path().size(), 8U);

    const auto last = makeWindow({10, 10, 50, 50}, 11);
    bool isStopping = false;
    last->onWrite = [&orbit, &isStopping] {
        // Stopping writes once more and so comes back here.
        if (!isStopping) {
            isStopping = true;
            orbit.stop();
        }
    };
    windows.push_back(last);
    orbit.sync(windows);
    orbit.step(2);
    EXPECT_TRUE(isStopping);
    EXPECT_EQ(orbit.trackedCount(), 0U);

    int lookups = 0;
    orbit.setBounds([&orbit, &lookups](const Rect&) {
        ++lookups;
        orbit.stop();
        return area;
    });
    orbit.sync(windows);
    orbit.step(3);
    EXPECT_EQ(lookups, 1);
    EXPECT_EQ(orbit.trackedCount(), 0U);
}

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

TEST(OrbitSetConfig, aShorterPathKeepsTheIndexWithinIt) {
    OrbitScheduler orbit(OrbitConfig{2, 1, true});
    orbit.sync({makeWindow()});
    for (int i = 0; i < 13; ++i) {
        orbit.step(i);
    }
    ASSERT_EQ(orbit.stepIndex(), 13);
    orbit.setConfig({1, 1, true});
    EXPECT_EQ(orbit.path(), OrbitScheduler::makePath(1, 1));
    EXPECT_EQ(orbit.stepIndex(), 5);
    orbit.setConfig({0, 1, true});
    EXPECT_EQ(orbit.path().size(), 1U);
    EXPECT_EQ(orbit.stepIndex(), 0);
}

TEST(OrbitSetConfig, turningTheOrbitOffWithoutJitterSendsWindowsHomeAtOnce) {
    OrbitScheduler orbit;
    const auto window = makeWindow();
    orbit.sync({window});
    orbit.step(1);
    orbit.setConfig(orbitOff);
    EXPECT_EQ(window->current, inTheMiddle);
    EXPECT_EQ(orbit.stepIndex(), 0);
    EXPECT_EQ(orbit.trackedCount(), 1U);
}

TEST(OrbitSetConfig, turningTheOrbitOffWithJitterLeavesWindowsToTheNextStep) {
    OrbitScheduler orbit({}, hourly);
    orbit.setBounds([](const Rect&) { return area; });
    const auto window = makeWindow();
    orbit.sync({window});
    orbit.step(jitteredTime());
    const Rect placed = window->current;
    window->resetCounts();
    orbit.setConfig(orbitOff);
    EXPECT_EQ(window->current, placed);
    EXPECT_EQ(window->reads + window->writes(), 0);
    EXPECT_EQ(orbit.stepIndex(), 0);
    orbit.step(jitteredTime());
    EXPECT_EQ(window->current, inTheMiddle.offsetBy(2, -1));
}

TEST(OrbitSetConfig, settingWhatIsOffToOffAgainMovesNothing) {
    OrbitScheduler orbit(orbitOff);
    const auto window = makeWindow({1, 1, 100, 100});
    orbit.noteSnapped(window, inTheMiddle);
    window->resetCounts();
    orbit.setConfig({3, 1, false});
    orbit.setJitter(std::nullopt);
    EXPECT_EQ(window->reads + window->writes(), 0);
}

TEST(OrbitSetJitter, turningTheJitterOffWithoutOrbitSendsWindowsHomeAtOnce) {
    OrbitScheduler orbit(orbitOff, hourly);
    const auto window = makeWindow();
    orbit.sync({window});
    orbit.step(jitteredTime());
    ASSERT_NE(window->current, inTheMiddle);
    orbit.setJitter(std::nullopt);
    EXPECT_EQ(window->current, inTheMiddle);
}

TEST(OrbitSetJitter, turningTheJitterOffWhileTheOrbitRunsLeavesWindowsToTheNextStep) {
    OrbitScheduler orbit({}, hourly);
    const auto window = makeWindow();
    orbit.sync({window});
    orbit.step(jitteredTime());
    window->resetCounts();
    orbit.setJitter(std::nullopt);
    EXPECT_EQ(window->reads + window->writes(), 0);
    orbit.step(jitteredTime());
    EXPECT_EQ(window->current, inTheMiddle.offsetBy(0, -2));
}

TEST(OrbitSetJitter, anotherPolicyTakesEffectAtTheNextStep) {
    OrbitScheduler orbit(orbitOff, hourly);
    const auto window = makeWindow();
    orbit.sync({window});
    orbit.step(jitteredTime());
    window->resetCounts();
    orbit.setJitter(JitterPolicy{0, 3600});
    EXPECT_EQ(window->writes(), 0);
    orbit.step(jitteredTime());
    EXPECT_EQ(window->current, inTheMiddle);
}

TEST(OrbitScheduler, turningBothOffReturnsWindowsHome) {
    for (const bool isOrbitFirst : {true, false}) {
        OrbitScheduler orbit({}, hourly);
        orbit.setBounds([](const Rect&) { return area; });
        const auto window = makeWindow(leftHalf);
        orbit.sync({window});
        orbit.step(jitteredTime());
        if (isOrbitFirst) {
            orbit.setConfig(orbitOff);
            EXPECT_NE(window->current, leftHalf);
            orbit.setJitter(std::nullopt);
        } else {
            orbit.setJitter(std::nullopt);
            EXPECT_NE(window->current, leftHalf);
            orbit.setConfig(orbitOff);
        }
        EXPECT_EQ(window->current, leftHalf);
    }
}

}  // namespace
}  // namespace lumatile
