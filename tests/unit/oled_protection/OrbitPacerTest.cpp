#include "oled_protection/OrbitPacer.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

namespace lumatile {
namespace {

constexpr double start = 1'700'000'000;
constexpr double endless = std::numeric_limits<double>::infinity();

TEST(OrbitPacer, theFirstStepComesAWholeIntervalAfterTheStart) {
    OrbitPacer pacer(300, false, 3, start);
    EXPECT_EQ(pacer.nextDue, start + 300);
    EXPECT_FALSE(pacer.shouldStep(start, false, endless));
    EXPECT_FALSE(pacer.shouldStep(start + 299.999, false, endless));
    EXPECT_TRUE(pacer.shouldStep(start + 300, false, endless));
}

TEST(OrbitPacer, aRefusalChangesNothing) {
    OrbitPacer pacer(300, true, 3, start);
    const OrbitPacer before = pacer;
    EXPECT_FALSE(pacer.shouldStep(start + 10, false, endless));
    EXPECT_FALSE(pacer.shouldStep(start + 400, true, endless));
    EXPECT_FALSE(pacer.shouldStep(start + 400, false, 2.9));
    EXPECT_EQ(pacer, before);
}

TEST(OrbitPacer, waitsTenMinutesForSomebodyWhoTypesAndStepsInTheFirstPause) {
    OrbitPacer pacer(300, true, 3, start);
    double lastKey = start;
    for (double now = start + 1; now <= start + 600; ++now) {
        // A key every 1.5 s, seen from the looks once a second.
        while (lastKey + 1.5 <= now) {
            lastKey += 1.5;
        }
        EXPECT_FALSE(pacer.shouldStep(now, false, now - lastKey)) << now - start;
    }
    double stepped = 0;
    for (double now = start + 601; stepped == 0; ++now) {
        ASSERT_LT(now, start + 610);
        if (pacer.shouldStep(now, false, now - lastKey)) {
            stepped = now;
        }
    }
    EXPECT_GE(stepped - lastKey, 3);
    EXPECT_LT(stepped - lastKey, 4);
}

TEST(OrbitPacer, exactlyThreeSecondsAreAPause) {
    OrbitPacer pacer(5, true, 3, start);
    EXPECT_FALSE(pacer.shouldStep(start + 5, false, 2.999));
    EXPECT_TRUE(pacer.shouldStep(start + 5, false, 3));
}

TEST(OrbitPacer, aHeldButtonDefersTheStepAlsoWithoutWaiting) {
    OrbitPacer pacer(5, false, 3, start);
    EXPECT_FALSE(pacer.shouldStep(start + 60, true, endless));
    EXPECT_TRUE(pacer.shouldStep(start + 61, false, 0));
}

TEST(OrbitPacer, theNextStepCountsFromTheOneThatWasTaken) {
    OrbitPacer pacer(300, false, 3, start);
    EXPECT_FALSE(pacer.shouldStep(start + 300, true, 0));
    EXPECT_TRUE(pacer.shouldStep(start + 450, false, 0));
    EXPECT_EQ(pacer.nextDue, start + 750);
    EXPECT_FALSE(pacer.shouldStep(start + 749, false, 0));
    EXPECT_TRUE(pacer.shouldStep(start + 750, false, 0));
}

TEST(OrbitPacer, aClockThatWasSetForwardMakesOneStepDue) {
    OrbitPacer pacer(300, false, 3, start);
    EXPECT_TRUE(pacer.shouldStep(start + 86400, false, 0));
    EXPECT_FALSE(pacer.shouldStep(start + 86401, false, 0));
}

TEST(OrbitPacer, knowsThatTheClockWasSetBack) {
    const OrbitPacer pacer(300, false, 3, start);
    EXPECT_FALSE(pacer.isAheadOfClock(start));
    EXPECT_FALSE(pacer.isAheadOfClock(start - 0.5)) << "clocks are trimmed by parts of a second";
    EXPECT_TRUE(pacer.isAheadOfClock(start - 2));
    EXPECT_FALSE(pacer.isAheadOfClock(start + 1000));
}

TEST(OrbitPacer, comparesAllItsFields) {
    const OrbitPacer pacer(300, true, 3, start);
    EXPECT_EQ(pacer, OrbitPacer(300, true, 3, start));
    EXPECT_NE(pacer, OrbitPacer(301, true, 3, start));
    EXPECT_NE(pacer, OrbitPacer(300, false, 3, start));
    EXPECT_NE(pacer, OrbitPacer(300, true, 4, start));
    EXPECT_NE(pacer, OrbitPacer(300, true, 3, start + 1));
}

// Whatever the hands do, steps are an interval apart, never fall on a held button or a busy user,
// and come at the first look at which nothing speaks against it.
RC_GTEST_PROP(OrbitPacerProperty, stepsAreSpacedAndNeverDisturb, ()) {
    const double interval = *rc::gen::element(1.0, 5.0, 30.0, 300.0);
    const bool waits = *rc::gen::arbitrary<bool>();
    OrbitPacer pacer(interval, waits, 3, start);
    double last = start;
    double now = start;
    for (int look = 0; look < 500; ++look) {
        now += *rc::gen::element(1.0, 1.0, 1.0, 1.05, 90.0);
        const bool held = *rc::gen::inRange(0, 4) == 0;
        const double idle = *rc::gen::inRange(0, 60) / 10.0;
        const bool may = now >= last + interval && !held && (!waits || idle >= 3);
        RC_ASSERT(pacer.shouldStep(now, held, idle) == may);
        if (may) {
            last = now;
        }
        RC_ASSERT(pacer.nextDue == last + interval);
    }
}

}  // namespace
}  // namespace lumatile
