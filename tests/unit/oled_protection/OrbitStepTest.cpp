#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

#include "tests/unit/oled_protection/OrbitStage.h"

namespace lumatile {
namespace {

using namespace orbit_stage;

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

TEST(OrbitStep, everyWindowIsWrittenBeforeAnyIsReadBack) {
    // Where an answer takes a while, it is waited for once.
    OrbitScheduler orbit;
    std::string asked;
    std::vector<std::shared_ptr<WindowControlling>> windows;
    for (int id = 0; id < 3; ++id) {
        const auto window = makeWindow({100.0 * id, 100, 300, 200}, id);
        window->onRead = [&asked] { asked += 'r'; };
        window->onWrite = [&asked] { asked += 'w'; };
        windows.push_back(window);
    }
    orbit.sync(windows);
    asked.clear();
    orbit.step(1);
    EXPECT_EQ(asked, "rwrwrwrrr");
    asked.clear();
    orbit.restoreHomes();
    EXPECT_EQ(asked, "rwrwrwrrr");
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
    std::vector<std::shared_ptr<WindowControlling>> windows;
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

}  // namespace
}  // namespace lumatile
