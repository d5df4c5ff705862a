#include "platform/simulated/SimulatedRunLoop.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace lumatile {
namespace {

struct RunLoopOnClock {
    SimulatedClock clock;
    SimulatedRunLoop loop{clock};
    std::vector<std::string> happened;

    std::function<void()> note(const std::string& what) {
        return [this, what] { happened.push_back(what); };
    }
};

using Happened = std::vector<std::string>;

TEST(SimulatedRunLoop, timeStandsStillUntilItIsAdvanced) {
    RunLoopOnClock desk;
    const double start = desk.loop.now();
    EXPECT_EQ(start, SimulatedClock::startOfTime);
    EXPECT_EQ(desk.loop.now(), start);
    desk.loop.advance(90);
    EXPECT_EQ(desk.loop.now(), start + 90);
}

TEST(SimulatedRunLoop, timersTickInTheOrderInWhichTheyFallDue) {
    RunLoopOnClock desk;
    const auto slow = desk.loop.repeat(3, desk.note("slow"));
    const auto quick = desk.loop.repeat(2, desk.note("quick"));
    desk.loop.advance(6);
    // Both are due after 6 s; the slow one has been waiting for longer.
    EXPECT_EQ(desk.happened, (Happened{"quick", "slow", "quick", "slow", "quick"}));
}

TEST(SimulatedRunLoop, aTickSeesTheTimeAtWhichItIsDue) {
    RunLoopOnClock desk;
    std::vector<double> seen;
    const auto timer = desk.loop.repeat(1.5, [&] { seen.push_back(desk.loop.now()); });
    desk.loop.advance(4);
    EXPECT_EQ(seen, (std::vector<double>{SimulatedClock::startOfTime + 1.5,
                                         SimulatedClock::startOfTime + 3}));
}

TEST(SimulatedRunLoop, advancingInStepsOrAtOnceIsTheSame) {
    RunLoopOnClock steps;
    RunLoopOnClock once;
    const auto first = steps.loop.repeat(0.3, steps.note("tick"));
    const auto second = once.loop.repeat(0.3, once.note("tick"));
    for (int i = 0; i < 100; ++i) {
        steps.loop.advance(0.1);
    }
    once.loop.advance(10);
    EXPECT_EQ(steps.happened.size(), 33U);
    EXPECT_EQ(once.happened, steps.happened);
    EXPECT_EQ(once.loop.now(), steps.loop.now());
}

TEST(SimulatedRunLoop, aDestroyedHandleEndsItsTimer) {
    RunLoopOnClock desk;
    auto timer = desk.loop.repeat(1, desk.note("tick"));
    EXPECT_EQ(desk.loop.timerCount(), 1U);
    desk.loop.advance(1);
    timer.reset();
    EXPECT_EQ(desk.loop.timerCount(), 0U);
    desk.loop.advance(10);
    EXPECT_EQ(desk.happened, (Happened{"tick"}));
}

TEST(SimulatedRunLoop, aTickMayDestroyItsOwnHandleAndGoOn) {
    RunLoopOnClock desk;
    std::unique_ptr<RunLoopTimer> timer;
    const auto kept = std::make_shared<std::string>("still here");
    timer = desk.loop.repeat(1, [&, kept] {
        timer.reset();
        desk.happened.push_back(*kept);
    });
    desk.loop.advance(5);
    EXPECT_EQ(desk.happened, (Happened{"still here"}));
    EXPECT_EQ(kept.use_count(), 1);
}

TEST(SimulatedRunLoop, aTickMayReplaceItsTimer) {
    RunLoopOnClock desk;
    std::unique_ptr<RunLoopTimer> timer;
    timer = desk.loop.repeat(1, [&] { timer = desk.loop.repeat(10, desk.note("replacement")); });
    desk.loop.advance(11);
    EXPECT_EQ(desk.happened, (Happened{"replacement"}));
    EXPECT_EQ(desk.loop.timerCount(), 1U);
}

TEST(SimulatedRunLoop, aPostRunsAfterThePresentCallHasReturned) {
    RunLoopOnClock desk;
    const auto timer = desk.loop.repeat(1, [&] {
        desk.loop.post([&] {
            desk.happened.emplace_back("post");
            desk.loop.post(desk.note("post of the post"));
        });
        desk.happened.emplace_back("tick");
    });
    desk.loop.post(desk.note("first"));
    EXPECT_TRUE(desk.happened.empty());
    desk.loop.advance(1);
    EXPECT_EQ(desk.happened, (Happened{"first", "tick", "post", "post of the post"}));
}

TEST(SimulatedRunLoop, settlingRunsPostsAndNoTimers) {
    RunLoopOnClock desk;
    const auto timer = desk.loop.repeat(1, desk.note("tick"));
    desk.loop.post(desk.note("post"));
    desk.loop.settle();
    EXPECT_EQ(desk.happened, (Happened{"post"}));
    EXPECT_EQ(desk.loop.now(), SimulatedClock::startOfTime);
}

TEST(SimulatedRunLoop, ticksMissedWhileTheProgramWaitsAreMadeUpForByOne) {
    RunLoopOnClock desk;
    std::vector<double> seen;
    const auto timer = desk.loop.repeat(1, [&] {
        seen.push_back(desk.loop.now() - SimulatedClock::startOfTime);
        if (seen.size() == 1) {
            desk.clock.elapseTo(desk.clock.sinceStart() + SimulatedClock::fromSeconds(3.5));
        }
    });
    desk.loop.advance(7);
    EXPECT_EQ(seen, (std::vector<double>{1, 4.5, 5, 6, 7}));
}

TEST(SimulatedRunLoop, advancingInsideACallbackOnlyLetsTimePass) {
    RunLoopOnClock desk;
    const auto timer = desk.loop.repeat(1, [&] {
        desk.happened.emplace_back("in");
        desk.loop.advance(0.5);
        desk.loop.settle();
        desk.happened.emplace_back("out");
    });
    desk.loop.advance(1);
    EXPECT_EQ(desk.happened, (Happened{"in", "out"}));
    EXPECT_EQ(desk.loop.now(), SimulatedClock::startOfTime + 1.5);
}

TEST(SimulatedRunLoop, aJumpOfTheWallClockMovesNoTimer) {
    RunLoopOnClock desk;
    const auto timer = desk.loop.repeat(10, desk.note("tick"));
    desk.clock.jump(86400);
    desk.loop.advance(9);
    EXPECT_TRUE(desk.happened.empty());
    desk.clock.jump(-2 * 86400.0);
    desk.loop.advance(1);
    EXPECT_EQ(desk.happened.size(), 1U);
    EXPECT_EQ(desk.loop.now(), SimulatedClock::startOfTime + 10 - 86400);
}

TEST(SimulatedRunLoop, absurdIntervalsAreTakenAsAMillisecond) {
    for (const double seconds : {0.0, -1.0, std::nan(""), 1e-12}) {
        RunLoopOnClock desk;
        const auto timer = desk.loop.repeat(seconds, desk.note("tick"));
        desk.loop.advance(0.01);
        EXPECT_EQ(desk.happened.size(), 10U) << seconds;
    }
}

TEST(SimulatedRunLoop, aHandleMayOutliveItsRunLoop) {
    std::unique_ptr<RunLoopTimer> timer;
    {
        RunLoopOnClock desk;
        timer = desk.loop.repeat(1, [] {});
    }
    timer.reset();
}

TEST(SimulatedRunLoop, whatHappensOutsideGoesOnWhileTheProgramWaits) {
    RunLoopOnClock desk;
    desk.clock.happen(SimulatedClock::fromSeconds(2), desk.note("later"));
    desk.clock.happen(SimulatedClock::fromSeconds(1), desk.note("sooner"));
    desk.clock.elapseTo(SimulatedClock::fromSeconds(1.5));
    EXPECT_EQ(desk.happened, (Happened{"sooner"}));
    desk.loop.advance(1);
    EXPECT_EQ(desk.happened, (Happened{"sooner", "later"}));
}

TEST(SimulatedClock, waitingEndsAsSoonAsWhatIsWaitedForHolds) {
    SimulatedClock clock;
    bool isDone = false;
    clock.happen(SimulatedClock::fromSeconds(1), [&] { isDone = true; });
    EXPECT_TRUE(clock.elapseTo(SimulatedClock::fromSeconds(5), [&] { return isDone; }));
    EXPECT_EQ(clock.sinceStart(), SimulatedClock::fromSeconds(1));
    EXPECT_FALSE(clock.elapseTo(SimulatedClock::fromSeconds(5), [] { return false; }));
    EXPECT_EQ(clock.sinceStart(), SimulatedClock::fromSeconds(5));
}

TEST(SimulatedRunLoop, aYearOfMinutesHasAllItsTicks) {
    RunLoopOnClock desk;
    int ticks = 0;
    const auto timer = desk.loop.repeat(60, [&] { ++ticks; });
    desk.loop.advance(365 * 86400.0);
    EXPECT_EQ(ticks, 365 * 24 * 60);
    EXPECT_EQ(desk.loop.now(), SimulatedClock::startOfTime + 365 * 86400.0);
}

}  // namespace
}  // namespace lumatile
