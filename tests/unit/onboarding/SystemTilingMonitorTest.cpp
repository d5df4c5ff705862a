#include "onboarding/SystemTilingMonitor.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

namespace lumatile {
namespace {

constexpr SystemTiling on{true, true};
constexpr SystemTiling off{false, false};

/// A system whose settings can be changed, and a clock that ticks by hand.
class SystemTilingMonitorTest : public testing::Test {
protected:
    SystemTilingMonitor::Read reader() {
        return [this] {
            ++reads;
            return system;
        };
    }

    SystemTilingMonitor::Repeat repeater() {
        return [this](double seconds, std::function<void()> handedIn) {
            interval = seconds;
            ++timers;
            tick = std::move(handedIn);
            return std::shared_ptr<void>(new int, [this](const int* made) {
                delete made;
                --timers;
            });
        };
    }

    SystemTiling system = on;
    int reads = 0;
    int timers = 0;
    double interval = 0;
    std::function<void()> tick;
};

TEST_F(SystemTilingMonitorTest, readsOnceOnCreationAndHasNoTimer) {
    const SystemTilingMonitor monitor(reader(), repeater());
    EXPECT_EQ(monitor.tiling(), on);
    EXPECT_EQ(reads, 1);
    EXPECT_EQ(timers, 0);
    EXPECT_FALSE(monitor.isStarted());
}

TEST_F(SystemTilingMonitorTest, readsAgainEverySecondAndAHalf) {
    SystemTilingMonitor monitor(reader(), repeater());
    monitor.start();
    EXPECT_TRUE(monitor.isStarted());
    EXPECT_EQ(timers, 1);
    EXPECT_EQ(interval, 1.5);

    system = off;
    EXPECT_EQ(monitor.tiling(), on);
    tick();
    EXPECT_EQ(monitor.tiling(), off);
    EXPECT_EQ(reads, 2);
}

TEST_F(SystemTilingMonitorTest, tellsOfChangesAlone) {
    SystemTilingMonitor monitor(reader(), repeater());
    int told = 0;
    monitor.onChange([&] {
        ++told;
        EXPECT_EQ(monitor.tiling(), system);
    });
    monitor.start();
    tick();
    tick();
    EXPECT_EQ(told, 0);
    system = {false, true};
    tick();
    tick();
    EXPECT_EQ(told, 1);
    system = on;
    tick();
    EXPECT_EQ(told, 2);
}

TEST_F(SystemTilingMonitorTest, startedTwiceItHasOneTimer) {
    SystemTilingMonitor monitor(reader(), repeater());
    monitor.start();
    monitor.start();
    EXPECT_EQ(timers, 1);
}

TEST_F(SystemTilingMonitorTest, stopGivesTheTimerUpAndStartMakesAnother) {
    SystemTilingMonitor monitor(reader(), repeater());
    monitor.stop();
    monitor.start();
    monitor.stop();
    EXPECT_EQ(timers, 0);
    EXPECT_FALSE(monitor.isStarted());
    monitor.start();
    EXPECT_EQ(timers, 1);
}

TEST_F(SystemTilingMonitorTest, theTimerGoesWithTheMonitor) {
    {
        SystemTilingMonitor monitor(reader(), repeater());
        monitor.start();
        ASSERT_EQ(timers, 1);
    }
    EXPECT_EQ(timers, 0);
}

TEST_F(SystemTilingMonitorTest, whoIsToldMayHandInAnother) {
    SystemTilingMonitor monitor(reader(), repeater());
    int told = 0;
    monitor.onChange([&] { monitor.onChange([&] { ++told; }); });
    monitor.start();
    system = off;
    tick();
    EXPECT_EQ(told, 0);
    system = on;
    tick();
    EXPECT_EQ(told, 1);
}

}  // namespace
}  // namespace lumatile
