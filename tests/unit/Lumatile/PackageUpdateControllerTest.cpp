#include "Lumatile/PackageUpdateController.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/simulated/SimulatedDesktop.h"
#include "platform/simulated/SimulatedNotices.h"
#include "platform/simulated/SimulatedPackageSource.h"

namespace lumatile {
namespace {

using State = PackageAnswer::State;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr double day = 24 * 60 * 60;

class PackageUpdateControllerTest : public testing::Test {
protected:
    PackageUpdateControllerTest() { restart(); }

    /// As the program does at its start.
    void restart() {
        controller = std::make_unique<PackageUpdateController>(PackageUpdateController::Parts{
            source, notifications, panel, desktop.preferences, desktop.runLoop, desktop.log,
            [this] { return isFullScreen; }, "0.1.0"});
        controller->start();
    }

    void publish(const std::string& version) {
        source.known = {State::updateAvailable, version, ""};
    }

    SimulatedDesktop desktop;
    SimulatedPackageSource source{desktop.runLoop};
    SimulatedNotifications notifications;
    SimulatedNoticePanel panel;
    bool isFullScreen = false;
    std::unique_ptr<PackageUpdateController> controller;
};

TEST_F(PackageUpdateControllerTest, checksOnceADay) {
    desktop.advance(10 * day);
    // The first check of the ten days comes a quarter of an hour after the start.
    EXPECT_EQ(source.asked, 10U);
}

TEST_F(PackageUpdateControllerTest, restartsDoNotMakeChecksMoreFrequent) {
    for (int start = 0; start < 24; ++start) {
        restart();
        desktop.advance(60 * 60);
    }
    EXPECT_EQ(source.asked, 1U);
}

TEST_F(PackageUpdateControllerTest, theUsersOwnCheckCountsForTheDay) {
    controller->checkForUpdates();
    desktop.advance(day - 60);
    EXPECT_EQ(source.asked, 1U);
    desktop.advance(60 * 60);
    EXPECT_EQ(source.asked, 2U);
}

TEST_F(PackageUpdateControllerTest, aClockSetBackDoesNotPutTheCheckOffForYears) {
    desktop.preferences.storeOnDisk(PackageUpdateController::lastCheckKey, Bytes("99999999999"));
    desktop.advance(60 * 60);
    EXPECT_EQ(source.asked, 1U);
}

TEST_F(PackageUpdateControllerTest, aStoredTimeThatIsNoneCountsAsNever) {
    for (const char* stored : {"", "yesterday", "12x", "99999999999999999999999", "1e9"}) {
        desktop.preferences.storeOnDisk(PackageUpdateController::lastCheckKey, Bytes(stored));
        const std::size_t before = source.asked;
        desktop.advance(60 * 60);
        EXPECT_EQ(source.asked, before + 1) << stored;
    }
}

TEST_F(PackageUpdateControllerTest, isOnUntilTheUserSwitchesItOff) {
    EXPECT_TRUE(controller->automaticallyChecksForUpdates());
    controller->setAutomaticallyChecksForUpdates(false);
    EXPECT_FALSE(controller->automaticallyChecksForUpdates());
    EXPECT_EQ(desktop.runLoop.timerCount(), 0U);
    restart();
    EXPECT_FALSE(controller->automaticallyChecksForUpdates());
    EXPECT_EQ(desktop.runLoop.timerCount(), 0U);
    desktop.advance(3 * day);
    EXPECT_EQ(source.asked, 0U);

    controller->setAutomaticallyChecksForUpdates(true);
    EXPECT_EQ(desktop.runLoop.timerCount(), 1U);
    desktop.advance(day);
    EXPECT_EQ(source.asked, 1U);
}

TEST_F(PackageUpdateControllerTest, storesNothingForASettingThatStays) {
    controller->setAutomaticallyChecksForUpdates(true);
    EXPECT_EQ(desktop.preferences.changes(PackageUpdateController::automaticKey), 0U);
}

TEST_F(PackageUpdateControllerTest, switchedOffByAnotherProcessItChecksNoMore) {
    desktop.preferences.storeOnDisk(PackageUpdateController::automaticKey, false);
    desktop.advance(3 * day);
    EXPECT_EQ(source.asked, 0U);
}

TEST_F(PackageUpdateControllerTest, notStartedItChecksOnlyWhenAsked) {
    PackageUpdateController other({source, notifications, panel, desktop.preferences,
                                   desktop.runLoop, desktop.log, [] { return false; }, "0.1.0"});
    controller.reset();
    desktop.advance(3 * day);
    EXPECT_EQ(source.asked, 0U);
    other.setAutomaticallyChecksForUpdates(false);
    other.setAutomaticallyChecksForUpdates(true);
    EXPECT_EQ(desktop.runLoop.timerCount(), 0U);
    other.checkForUpdates();
    EXPECT_EQ(source.asked, 1U);
}

TEST_F(PackageUpdateControllerTest, anUpdateIsAnnouncedByOneNotification) {
    publish("0.2.0");
    desktop.advance(5 * day);
    EXPECT_GT(source.asked, 3U);
    ASSERT_THAT(notifications.shown(), SizeIs(1));
    EXPECT_EQ(notifications.shown()[0],
              (Notice{"An update of Lumatile is available",
                      "Version 0.2.0 can be installed. You have version 0.1.0.", "Show Updates"}));
    EXPECT_THAT(panel.shown(), IsEmpty());

    publish("0.3.0");
    desktop.advance(5 * day);
    ASSERT_THAT(notifications.shown(), SizeIs(2));
    EXPECT_THAT(notifications.shown()[1].text, HasSubstr("0.3.0"));
}

TEST_F(PackageUpdateControllerTest, theActionShowsTheUpdates) {
    publish("0.2.0");
    desktop.advance(day);
    notifications.choose();
    EXPECT_EQ(source.centreOpened, 1U);
    EXPECT_EQ(source.installs, 0U);
    EXPECT_THAT(panel.shown(), IsEmpty());
}

TEST_F(PackageUpdateControllerTest, aSoftwareCentreThatDoesNotStartIsTold) {
    publish("0.2.0");
    source.softwareCentreStarts = false;
    desktop.advance(day);
    notifications.choose();
    ASSERT_THAT(panel.shown(), SizeIs(1));
    EXPECT_EQ(panel.shown()[0].title, "The updates could not be shown");
}

TEST_F(PackageUpdateControllerTest, withoutASoftwareCentreTheServiceInstalls) {
    publish("0.2.0");
    source.hasSoftwareCentre = false;
    desktop.advance(day);
    ASSERT_THAT(notifications.shown(), SizeIs(1));
    EXPECT_EQ(notifications.shown()[0].action, "Install");
    notifications.choose();
    desktop.advance(1);
    EXPECT_EQ(source.installs, 1U);
    ASSERT_THAT(panel.shown(), SizeIs(1));
    EXPECT_EQ(panel.shown()[0].text, "Version 0.2.0 runs from the next start of Lumatile on.");
}

TEST_F(PackageUpdateControllerTest, aFailedInstallationIsToldAndLogged) {
    publish("0.2.0");
    source.hasSoftwareCentre = false;
    source.installError = "not authorized";
    controller->checkForUpdates();
    desktop.advance(1);
    panel.choose();
    desktop.advance(1);
    ASSERT_THAT(panel.shown(), SizeIs(2));
    EXPECT_EQ(panel.shown()[1].title, "The update was not installed");
    EXPECT_THAT(desktop.log.lines(),
                testing::ElementsAre("Updater: failed to install: not authorized"));
}

TEST_F(PackageUpdateControllerTest, nothingIsInstalledUnasked) {
    publish("0.2.0");
    source.hasSoftwareCentre = false;
    desktop.advance(5 * day);
    controller->checkForUpdates();
    desktop.advance(5 * day);
    EXPECT_EQ(source.installs, 0U);
    EXPECT_EQ(source.centreOpened, 0U);
}

TEST_F(PackageUpdateControllerTest, nothingIsAskedOrShownUnderAFullScreenWindow) {
    publish("0.2.0");
    isFullScreen = true;
    desktop.advance(3 * day);
    EXPECT_EQ(source.asked, 0U);
    isFullScreen = false;
    desktop.advance(PackageUpdateController::interval + 1);
    EXPECT_EQ(source.asked, 1U);
    EXPECT_THAT(notifications.shown(), SizeIs(1));
}

TEST_F(PackageUpdateControllerTest, anAnswerThatComesUnderAFullScreenWindowWaits) {
    publish("0.2.0");
    source.answersAtOnce = false;
    desktop.advance(60 * 60);
    isFullScreen = true;
    source.answer();
    desktop.advance(60 * 60);
    EXPECT_THAT(notifications.shown(), IsEmpty());
    isFullScreen = false;
    desktop.advance(PackageUpdateController::interval + 1);
    EXPECT_THAT(notifications.shown(), SizeIs(1));
    EXPECT_EQ(source.asked, 1U);
}

TEST_F(PackageUpdateControllerTest, checksByItselfSayNothingElse) {
    for (const State state : {State::upToDate, State::noPackage, State::noService, State::failed}) {
        source.known = {state, "", "timed out"};
        desktop.advance(day);
    }
    EXPECT_EQ(source.asked, 4U);
    EXPECT_THAT(notifications.shown(), IsEmpty());
    EXPECT_THAT(panel.shown(), IsEmpty());
    EXPECT_THAT(desktop.log.lines(),
                testing::ElementsAre("Updater: failed to look for updates: timed out"));
}

TEST_F(PackageUpdateControllerTest, theUserIsAnsweredEitherWay) {
    struct Case {
        State state;
        std::string title;
    };
    for (const auto& [state, title] :
         {Case{State::updateAvailable, "An update of Lumatile is available"},
          Case{State::upToDate, "Lumatile is up to date"},
          Case{State::noPackage, "This copy of Lumatile is not from a package"},
          Case{State::noService, "Updates come with the system"},
          Case{State::failed, "Looking for updates failed"}}) {
        source.known = {state, state == State::updateAvailable ? "0.2.0" : "", ""};
        const std::size_t before = panel.shown().size();
        controller->checkForUpdates();
        desktop.advance(1);
        ASSERT_THAT(panel.shown(), SizeIs(before + 1)) << title;
        EXPECT_EQ(panel.shown().back().title, title);
        EXPECT_THAT(panel.shown().back().text, HasSubstr("0.1.0"));
        EXPECT_EQ(panel.shown().back().action.empty(), state != State::updateAvailable);
    }
    EXPECT_THAT(notifications.shown(), IsEmpty());
}

TEST_F(PackageUpdateControllerTest, theUserIsAnsweredUnderAFullScreenWindowToo) {
    isFullScreen = true;
    controller->checkForUpdates();
    desktop.advance(1);
    EXPECT_THAT(panel.shown(), SizeIs(1));
}

TEST_F(PackageUpdateControllerTest, askedTwiceItAnswersOnce) {
    source.answersAtOnce = false;
    controller->checkForUpdates();
    controller->checkForUpdates();
    EXPECT_EQ(source.asked, 1U);
    source.answer();
    EXPECT_THAT(panel.shown(), SizeIs(1));
}

TEST_F(PackageUpdateControllerTest, askedDuringACheckByItselfItAnswersTheUser) {
    publish("0.2.0");
    source.answersAtOnce = false;
    desktop.advance(60 * 60);
    ASSERT_EQ(source.asked, 1U);
    controller->checkForUpdates();
    EXPECT_EQ(source.asked, 1U);
    source.answer();
    EXPECT_THAT(panel.shown(), SizeIs(1));
    EXPECT_THAT(notifications.shown(), IsEmpty());
}

TEST_F(PackageUpdateControllerTest, whatComesAfterItsEndIsDropped) {
    publish("0.2.0");
    source.answersAtOnce = false;
    controller->checkForUpdates();
    controller.reset();
    source.answer();
    EXPECT_THAT(panel.shown(), IsEmpty());

    restart();
    controller->checkForUpdates();
    source.answer();
    ASSERT_THAT(panel.shown(), SizeIs(1));
    controller.reset();
    panel.choose();
    EXPECT_EQ(source.centreOpened, 0U);
    EXPECT_EQ(desktop.runLoop.timerCount(), 0U);
}

}  // namespace
}  // namespace lumatile
