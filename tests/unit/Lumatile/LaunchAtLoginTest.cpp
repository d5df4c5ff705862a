#include "Lumatile/LaunchAtLogin.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/simulated/SimulatedLog.h"
#include "platform/simulated/SimulatedLoginItem.h"

namespace lumatile {
namespace {

using Status = LoginItem::Status;

class LaunchAtLoginTest : public testing::Test {
protected:
    LaunchAtLoginTest() {
        launch.onChange([this] { ++told; });
    }

    SimulatedLoginItem item;
    SimulatedLog log;
    LaunchAtLogin launch{item, log};
    int told = 0;
};

TEST_F(LaunchAtLoginTest, isOffUntilItWasRead) {
    item.setStatus(Status::enabled);
    EXPECT_FALSE(launch.isEnabled());
    launch.refresh();
    EXPECT_TRUE(launch.isEnabled());
    EXPECT_EQ(told, 1);
}

TEST_F(LaunchAtLoginTest, onlyEnabledCountsAsOn) {
    for (const Status status :
         {Status::notRegistered, Status::requiresApproval, Status::notFound}) {
        item.setStatus(Status::enabled);
        launch.refresh();
        ASSERT_TRUE(launch.isEnabled());
        item.setStatus(status);
        launch.refresh();
        EXPECT_FALSE(launch.isEnabled());
    }
}

TEST_F(LaunchAtLoginTest, tellsOfChangesAlone) {
    launch.refresh();
    EXPECT_EQ(told, 0);
    item.setStatus(Status::enabled);
    launch.refresh();
    launch.refresh();
    EXPECT_EQ(told, 1);
    item.setStatus(Status::requiresApproval);
    launch.refresh();
    item.setStatus(Status::notFound);
    launch.refresh();
    EXPECT_EQ(told, 2);
}

TEST_F(LaunchAtLoginTest, registersAndUnregisters) {
    launch.setEnabled(true);
    EXPECT_EQ(item.status(), Status::enabled);
    EXPECT_TRUE(launch.isEnabled());
    launch.setEnabled(false);
    EXPECT_EQ(item.status(), Status::notRegistered);
    EXPECT_FALSE(launch.isEnabled());
    EXPECT_EQ(told, 2);
    EXPECT_THAT(log.lines(), testing::IsEmpty());
}

TEST_F(LaunchAtLoginTest, aRegistrationThatNeedsApprovalStaysOff) {
    item.setNeedsApproval(true);
    launch.setEnabled(true);
    EXPECT_FALSE(launch.isEnabled());
    EXPECT_EQ(told, 0);
    EXPECT_THAT(log.lines(), testing::IsEmpty());
}

TEST_F(LaunchAtLoginTest, aFailedRegistrationIsLoggedAndStaysOff) {
    item.refuse("no space left on the disk");
    launch.setEnabled(true);
    EXPECT_THAT(log.lines(), testing::ElementsAre(
                                 "LaunchAtLogin: failed to register: no space left on the disk"));
    EXPECT_FALSE(launch.isEnabled());
    EXPECT_EQ(told, 0);
}

TEST_F(LaunchAtLoginTest, aFailedUnregistrationIsLoggedAndKeepsTheRealState) {
    launch.setEnabled(true);
    item.refuse("read-only file system");
    launch.setEnabled(false);
    EXPECT_THAT(log.lines(),
                testing::ElementsAre("LaunchAtLogin: failed to unregister: read-only file system"));
    EXPECT_TRUE(launch.isEnabled());
    EXPECT_EQ(told, 1);
}

TEST_F(LaunchAtLoginTest, aFailureReadsWhatAnotherProgramDidMeanwhile) {
    launch.setEnabled(true);
    item.setStatus(Status::notRegistered);
    item.refuse("read-only file system");
    launch.setEnabled(false);
    EXPECT_FALSE(launch.isEnabled());
}

}  // namespace
}  // namespace lumatile
