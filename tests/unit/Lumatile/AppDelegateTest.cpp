#include "Lumatile/AppDelegate.h"

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"

namespace lumatile {
namespace {

constexpr KeyCombination controlOptionLeft{123, 6144};

TEST(AppDelegate, nothingIsStartedBeforeTheLaunchHasFinished) {
    SimulatedDesktop desk;
    const AppDelegate delegate(desk.platform());
    EXPECT_TRUE(desk.hotKeys.registered().empty());
    EXPECT_EQ(desk.hotKeys.installations(), 0U);
    EXPECT_EQ(desk.preferences.changes(), 0U);
    EXPECT_TRUE(desk.log.lines().empty());
}

TEST(AppDelegate, fromTheLaunchToTheEndShortcutsWork) {
    SimulatedDesktop desk;
    desk.plug("main", {0, 0, 1920, 1080});
    desk.preferences.storeOnDisk("oledSettings", Bytes(R"({"jitterEnabled":false})"));
    AppDelegate delegate(desk.platform());
    delegate.applicationDidFinishLaunching();
    const ApplicationID editor = desk.launch({.pid = 100});
    const WindowID window = desk.open(editor, Rect{300, 300, 640, 480});
    EXPECT_EQ(desk.press(controlOptionLeft), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.frame(window), (Rect{0, 0, 960, 1080}));
    EXPECT_TRUE(delegate.app().featuresRunning());

    delegate.applicationWillTerminate();
    EXPECT_FALSE(delegate.app().featuresRunning());
    EXPECT_TRUE(desk.hotKeys.registered().empty());
    EXPECT_EQ(desk.press(controlOptionLeft), KeyReceiver::frontWindow);
    EXPECT_EQ(desk.preferences.changes(), 0U);
    EXPECT_TRUE(desk.log.lines().empty());
}

}  // namespace
}  // namespace lumatile
