#include "oled_protection/OrbitScheduler.h"

#include <optional>

#include <gtest/gtest.h>

#include "tests/unit/oled_protection/OrbitStage.h"

namespace lumatile {
namespace {

using namespace orbit_stage;

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

}  // namespace
}  // namespace lumatile
