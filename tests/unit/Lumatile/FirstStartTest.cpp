// The program started in a session that does not let it control windows yet.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "Lumatile/AppDelegate.h"
#include "oled_protection/OLEDSettingsCodec.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "preference_sync/PreferenceSyncEngine.h"
#include "preference_sync/SyncTimestamp.h"

namespace lumatile {
namespace {

constexpr KeyCombination controlOptionLeft{123, 6144};

class FirstStart : public testing::Test {
protected:
    FirstStart() {
        desk.plug("main", {0, 0, 1920, 1080});
        desk.preferences.storeOnDisk("oledSettings", Bytes(R"({"jitterEnabled":false})"));
        desk.accessibility.setTrusted(false);
        const ApplicationID editor = desk.launch({.pid = 100});
        window = desk.open(editor, Rect{300, 300, 640, 480});
        delegate = std::make_unique<AppDelegate>(desk.platform());
        delegate->onStarted = [this] { ++starts; };
    }

    void launch() { delegate->applicationDidFinishLaunching(); }

    void grant() {
        desk.accessibility.setTrusted(true);
        desk.advance(OnboardingModel::pollInterval);
    }

    SimulatedDesktop desk;
    WindowID window;
    std::unique_ptr<AppDelegate> delegate;
    int starts = 0;
};

TEST_F(FirstStart, withoutTheGrantTheOnboardingIsShownAndNothingRuns) {
    launch();
    EXPECT_TRUE(desk.statusItem.image().has_value());
    EXPECT_TRUE(desk.onboarding.isOpen);
    ASSERT_NE(delegate->onboarding(), nullptr);
    EXPECT_EQ(delegate->onboarding()->model()->state(), GrantState::requesting);
    EXPECT_EQ(desk.accessibility.promptsShown(), 0U) << "the user has not asked for it yet";
    EXPECT_FALSE(delegate->app().featuresRunning());
    EXPECT_TRUE(desk.hotKeys.registered().empty());
    EXPECT_EQ(desk.press(controlOptionLeft), KeyReceiver::frontWindow);
    EXPECT_EQ(starts, 0);
}

TEST_F(FirstStart, aGrantThatComesLaterStartsEverythingOnce) {
    launch();
    desk.advance(30);
    EXPECT_EQ(starts, 0);
    grant();
    EXPECT_TRUE(delegate->app().featuresRunning());
    EXPECT_EQ(starts, 1);
    EXPECT_EQ(desk.press(controlOptionLeft), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.frame(window), (Rect{0, 0, 960, 1080}))
        << "what the last page tells the user to try works while it is shown";
    EXPECT_TRUE(desk.onboarding.isOpen);
    const std::size_t registered = desk.hotKeys.registered().size();
    desk.onboarding.model->done();
    EXPECT_FALSE(desk.onboarding.isOpen);
    EXPECT_EQ(desk.hotKeys.registered().size(), registered);
    EXPECT_EQ(desk.hotKeys.installations(), 1U);
    desk.advance(10);
    EXPECT_EQ(starts, 1);
    EXPECT_TRUE(desk.log.lines().empty());
}

TEST_F(FirstStart, theLastPageNamesAKeyThatWorksWhereItsOwnAreTaken) {
    launch();
    for (const std::uint32_t arrow : {123U, 124U, 125U, 126U}) {
        desk.hotKeys.take({arrow, 6144});
    }
    const auto model = delegate->onboarding()->model();
    grant();
    EXPECT_EQ(model->advice(), (OnboardingModel::Advice{"⌃⌥U", "Top Left"}));
}

TEST_F(FirstStart, settingsAreSharedFromTheGrantOn) {
    desk.sharedStore.setLocation(SimulatedSharedFolder::usualLocation);
    OLEDSettings elsewhere = delegate->app().oledSettings();
    elsewhere.idleThreshold += 60;
    desk.sharedFolder.put(
        {{std::string(OLEDSettings::preferenceKey), OLEDSettingsCodec::encode(elsewhere)},
         {std::string(PreferenceSyncEngine::timestampKey),
          SyncTimestamp::encode(desk.clock.wallSeconds())}});
    launch();
    desk.advance(10);
    EXPECT_NE(delegate->app().oledSettings(), elsewhere);
    grant();
    desk.advance(1);
    EXPECT_EQ(delegate->app().oledSettings(), elsewhere);
}

TEST_F(FirstStart, withTheGrantNoOnboardingIsShown) {
    desk.accessibility.setTrusted(true);
    launch();
    EXPECT_EQ(desk.onboarding.windows, 0);
    EXPECT_EQ(delegate->onboarding(), nullptr);
    EXPECT_EQ(starts, 1);
}

TEST_F(FirstStart, theGrantTakenAwayLaterStopsNothing) {
    desk.accessibility.setTrusted(true);
    launch();
    desk.accessibility.setTrusted(false);
    desk.advance(60);
    EXPECT_TRUE(delegate->app().featuresRunning());
    EXPECT_EQ(desk.onboarding.windows, 0);
    desk.accessibility.setTrusted(true);
    EXPECT_EQ(desk.press(controlOptionLeft), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.frame(window), (Rect{0, 0, 960, 1080}));
}

TEST_F(FirstStart, startedAgainItShowsTheOnboardingUntilTheGrantAndThenTheSettings) {
    launch();
    delegate->applicationShouldHandleReopen();
    EXPECT_EQ(desk.onboarding.shown, 2);
    EXPECT_EQ(desk.onboarding.windows, 1);
    EXPECT_EQ(desk.settingsWindow.shown, 0);
    desk.onboarding.close();
    EXPECT_FALSE(desk.onboarding.isOpen);
    desk.accessibility.setTrusted(true);
    desk.advance(10);
    EXPECT_EQ(starts, 0) << "nobody looks while the window is closed";
    delegate->applicationShouldHandleReopen();
    EXPECT_EQ(starts, 1);
    delegate->applicationShouldHandleReopen();
    EXPECT_EQ(desk.settingsWindow.shown, 1);
}

TEST_F(FirstStart, whatTheSessionLacksIsLoggedWhenTheUserAsksForThePermission) {
    desk.workspace.opensAddresses = false;
    desk.accessibility.obstacle = TrustObstacle::noWindowManager;
    launch();
    desk.advance(10);
    EXPECT_TRUE(desk.log.lines().empty());
    desk.onboarding.model->request();
    desk.advance(1.75);
    EXPECT_EQ(desk.onboarding.model->missing(), TrustObstacle::noWindowManager);
    ASSERT_EQ(desk.log.lines().size(), 1U);
    EXPECT_EQ(
        desk.log.lines().front(),
        "AccessibilityGrantFlow: No window manager is running in this session. As soon as one "
        "is, Lumatile continues by itself.");
}

TEST_F(FirstStart, theModelKnowsTheDesktopsOwnTiling) {
    desk.tiling.version = 14;
    launch();
    EXPECT_EQ(desk.onboarding.model->tiling(), SystemTiling{});
    desk.tiling.version = 15;
    desk.tiling.values["EnableTilingByEdgeDrag"] = false;
    AppDelegate other(desk.platform());
    other.applicationDidFinishLaunching();
    EXPECT_EQ(desk.onboarding.model->tiling(), (SystemTiling{false, true}));
}

TEST_F(FirstStart, theEndWhileItWaitsClosesTheWindowAndItsTimers) {
    launch();
    desk.onboarding.model->request();
    delegate->applicationWillTerminate();
    EXPECT_FALSE(desk.onboarding.isOpen);
    grant();
    EXPECT_EQ(starts, 0);
    EXPECT_FALSE(delegate->app().featuresRunning());
    EXPECT_EQ(desk.runLoop.timerCount(), 0U);
}

TEST_F(FirstStart, theCompletionDoesNothingOnceTheDelegateIsGone) {
    launch();
    const std::shared_ptr<OnboardingModel> model = desk.onboarding.model;
    const auto granted = model->onGranted;
    const auto done = model->onDone;
    delegate.reset();
    granted();
    done();
    EXPECT_EQ(starts, 0);
    EXPECT_TRUE(desk.hotKeys.registered().empty());
    EXPECT_FALSE(desk.onboarding.isOpen);
}

}  // namespace
}  // namespace lumatile
