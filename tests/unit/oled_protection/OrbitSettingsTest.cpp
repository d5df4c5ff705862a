#include <gtest/gtest.h>

#include <optional>

#include "tests/unit/oled_protection/OrbitStage.h"

// What a change of path or jitter does to windows that are under way.

namespace lumatile {
namespace {

using namespace orbit_stage;

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
