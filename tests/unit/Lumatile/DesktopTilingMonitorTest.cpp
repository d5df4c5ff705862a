#include "Lumatile/DesktopTilingMonitor.h"

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"
#include "platform/simulated/SimulatedDesktopTiling.h"

namespace lumatile {
namespace {

class DesktopTilingMonitorTest : public testing::Test {
protected:
    SimulatedDesktop desktop;
    SimulatedDesktopTiling tiling;
};

TEST_F(DesktopTilingMonitorTest, aDesktopWithoutTilingNeverConflicts) {
    tiling.version = 14;
    tiling.values["EnableTilingByEdgeDrag"] = true;
    EXPECT_EQ(readTiling(tiling), SystemTiling{});
    EXPECT_EQ(tiling.lookups, 0U);
}

TEST_F(DesktopTilingMonitorTest, whatIsNotSetIsOn) {
    tiling.values["EnableTilingByEdgeDrag"] = false;
    EXPECT_EQ(readTiling(tiling), (SystemTiling{false, true}));
}

TEST_F(DesktopTilingMonitorTest, aChangeShowsWithinASecondAndAHalf) {
    const auto monitor = monitorTiling(tiling, desktop.runLoop);
    int told = 0;
    monitor->onChange([&] { ++told; });
    monitor->start();
    desktop.advance(10);
    EXPECT_TRUE(monitor->tiling().conflictsWithDragToSnap());
    EXPECT_EQ(told, 0);

    EXPECT_TRUE(tiling.switchOff());
    desktop.advance(1.5);
    EXPECT_FALSE(monitor->tiling().conflictsWithDragToSnap());
    EXPECT_EQ(told, 1);
}

TEST_F(DesktopTilingMonitorTest, stoppedItAsksNothingAndLeavesNoTimer) {
    const std::size_t before = desktop.runLoop.timerCount();
    const auto monitor = monitorTiling(tiling, desktop.runLoop);
    EXPECT_EQ(desktop.runLoop.timerCount(), before);
    monitor->start();
    EXPECT_EQ(desktop.runLoop.timerCount(), before + 1);
    desktop.advance(3);
    monitor->stop();
    EXPECT_EQ(desktop.runLoop.timerCount(), before);

    const std::size_t asked = tiling.lookups;
    desktop.advance(60);
    EXPECT_EQ(tiling.lookups, asked);
}

TEST_F(DesktopTilingMonitorTest, theTimerGoesWithTheMonitor) {
    const std::size_t before = desktop.runLoop.timerCount();
    {
        const auto monitor = monitorTiling(tiling, desktop.runLoop);
        monitor->start();
        ASSERT_EQ(desktop.runLoop.timerCount(), before + 1);
    }
    EXPECT_EQ(desktop.runLoop.timerCount(), before);
}

}  // namespace
}  // namespace lumatile
