// Settings that other computers share, as the conductor wires them, on a whole desktop.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "commands/CommandStore.h"
#include "oled_protection/OLEDSettingsCodec.h"
#include "preference_sync/PreferenceSyncEngine.h"
#include "preference_sync/SyncTimestamp.h"
#include "tests/unit/Lumatile/DesktopWithConductor.h"

namespace lumatile {
namespace {

constexpr std::uint32_t controlOption = ClassicModifier::control | ClassicModifier::option;
constexpr std::uint32_t keyA = 0;

struct SharingDesktop : DesktopWithConductor {
    SharingDesktop() { conductor->createStatusMenu(); }

    /// As at start, with the location named before.
    void share() {
        sharedStore.setLocation(SimulatedSharedFolder::usualLocation);
        pass(1);
        conductor->startPreferenceSync();
        pass(1);
    }

    /// Lets the program run in between.
    void pass(double seconds) {
        constexpr double stride = 0.05;
        for (double passed = 0; passed < seconds; passed += stride) {
            advance(stride);
        }
    }

    /// What another computer would have stored: "left" on another key and the shift switched on.
    SharedSet othersSet(double time) const {
        std::vector<SnapCommand> commands = conductor->store().commands;
        commands.front().shortcut = Shortcut{keyA, controlOption, true};
        OLEDSettings settings = conductor->oledSettings();
        settings.orbitEnabled = true;
        return {{std::string(CommandStore::preferenceKey), CommandStore(commands).encode()},
                {std::string(OLEDSettings::preferenceKey), OLEDSettingsCodec::encode(settings)},
                {std::string(PreferenceSyncEngine::timestampKey), SyncTimestamp::encode(time)}};
    }

    void otherChanges(double time) {
        sharedFolder.put(othersSet(time));
        pass(1);
    }

    double storedTime(std::string_view key) {
        return SyncTimestamp::decode(preferences.bytes(key));
    }
    double localTime() { return storedTime(PreferenceSyncEngine::timestampKey); }
    double sharedTime() const { return changeTime(sharedFolder.present()); }

    void changeHere() {
        OLEDSettings settings = conductor->oledSettings();
        settings.idleThreshold += 60;
        conductor->changeOLEDSettings(settings);
        pass(1);
    }

    bool hasOthersSettings() const {
        const auto keys = hotKeys.registered();
        return conductor->oledSettings().orbitEnabled &&
               conductor->store().commands.front().shortcut ==
                   Shortcut{keyA, controlOption, true} &&
               std::find(keys.begin(), keys.end(), KeyCombination{keyA, controlOption}) !=
                   keys.end();
    }

    /// Both sides were the same at `synced` and have changed since.
    void seedConflict(double synced) {
        preferences.setBytes(PreferenceSyncEngine::lastSyncKey, SyncTimestamp::encode(synced));
        preferences.setBytes(PreferenceSyncEngine::timestampKey,
                             SyncTimestamp::encode(synced + 10));
    }
};

TEST(ConductorSync, withoutALocationNothingIsShared) {
    SharingDesktop desk;
    desk.conductor->startPreferenceSync();
    desk.changeHere();
    EXPECT_TRUE(desk.sharedFolder.present().empty());
    EXPECT_GT(desk.localTime(), 0) << "so that a location named later knows how old this is";
}

TEST(ConductorSync, whatAnotherComputerHasIsTakenOverAtTheStart) {
    SharingDesktop desk;
    const double time = desk.clock.wallSeconds() - 100;
    desk.sharedFolder.put(desk.othersSet(time));
    desk.share();
    EXPECT_TRUE(desk.hasOthersSettings());
    EXPECT_TRUE(desk.conductor->isProtectionActive());
    EXPECT_EQ(desk.localTime(), time);
    EXPECT_EQ(desk.storedTime(PreferenceSyncEngine::lastSyncKey), time);
    EXPECT_EQ(desk.sharedTime(), time) << "what came from there is not a change of ours";
}

TEST(ConductorSync, aChangeOnAnotherComputerIsInForceAtOnce) {
    SharingDesktop desk;
    desk.share();
    desk.conductor->openSettings();
    const double time = desk.clock.wallSeconds();
    desk.otherChanges(time);
    EXPECT_TRUE(desk.hasOthersSettings());
    EXPECT_EQ(desk.settingsWindow.model->commands(), desk.conductor->store().commands);
    EXPECT_EQ(desk.settingsWindow.model->oled(), desk.conductor->oledSettings());
    EXPECT_EQ(desk.sharedTime(), time);
}

TEST(ConductorSync, shortcutsFromThereRestWhileTheFeaturesAreStopped) {
    SharingDesktop desk;
    desk.share();
    desk.conductor->stopFeatures();
    desk.otherChanges(desk.clock.wallSeconds());
    EXPECT_TRUE(desk.hotKeys.registered().empty());
    desk.conductor->startFeatures();
    EXPECT_TRUE(desk.hasOthersSettings());
}

TEST(ConductorSync, whatTheUserChangesIsShared) {
    SharingDesktop desk;
    desk.share();
    desk.changeHere();
    SharedSet shared = desk.sharedFolder.present();
    EXPECT_EQ(OLEDSettingsCodec::decode(shared["oledSettings"]), desk.conductor->oledSettings());
    EXPECT_EQ(desk.sharedTime(), desk.localTime());

    desk.conductor->openSettings();
    desk.settingsWindow.model->addCustomArea();
    desk.pass(1);
    shared = desk.sharedFolder.present();
    EXPECT_EQ(CommandStore::decode(shared["commands"]), desk.conductor->store().commands);
    EXPECT_EQ(desk.conductor->store().commands.back().displayName(), "Custom Area");
}

TEST(ConductorSync, theDemonstrationModeIsNotShared) {
    SharingDesktop desk;
    desk.share();
    desk.conductor->setExaggerated(true);
    desk.pass(1);
    EXPECT_TRUE(desk.sharedFolder.present().empty());
}

TEST(ConductorSync, aConflictIsThePersonsToSettle) {
    for (const bool preferLocal : {true, false}) {
        SharingDesktop desk;
        desk.share();
        const double synced = desk.clock.wallSeconds() - 1000;
        desk.seedConflict(synced);
        const auto before = desk.conductor->oledSettings();
        desk.otherChanges(synced + 20);
        ASSERT_TRUE(desk.conflictPrompt.shown);
        EXPECT_EQ(desk.conflictPrompt.shown->localTimestamp, synced + 10);
        EXPECT_EQ(desk.conflictPrompt.shown->remoteTimestamp, synced + 20);
        EXPECT_EQ(desk.conductor->oledSettings(), before) << "nothing is decided yet";
        EXPECT_EQ(
            desk.conflictPrompt.differences,
            (ConflictDifferences{"1 shortcut, pixel shift off", "1 shortcut, pixel shift on"}));

        desk.conflictPrompt.choose(preferLocal);
        desk.pass(1);
        EXPECT_FALSE(desk.conflictPrompt.shown);
        EXPECT_EQ(desk.hasOthersSettings(), !preferLocal);
        EXPECT_EQ(desk.sharedTime(), desk.localTime());
        EXPECT_GT(desk.localTime(), synced + 20);
    }
}

TEST(ConductorSync, aConflictThatIsClosedComesBackAtTheNextChange) {
    SharingDesktop desk;
    desk.share();
    const double synced = desk.clock.wallSeconds() - 1000;
    desk.seedConflict(synced);
    desk.otherChanges(synced + 20);
    desk.conflictPrompt.close();
    desk.pass(100);
    EXPECT_FALSE(desk.conflictPrompt.shown);
    EXPECT_EQ(desk.localTime(), synced + 10);
    desk.otherChanges(synced + 30);
    ASSERT_TRUE(desk.conflictPrompt.shown);
    EXPECT_EQ(desk.conflictPrompt.shown->remoteTimestamp, synced + 30);
}

TEST(ConductorSync, aConflictAtTheStartWaitsForTheNextChange) {
    SharingDesktop desk;
    const double synced = desk.clock.wallSeconds() - 1000;
    desk.seedConflict(synced);
    desk.sharedFolder.put(desk.othersSet(synced + 20));
    desk.share();
    EXPECT_FALSE(desk.conflictPrompt.shown);
    desk.otherChanges(synced + 30);
    EXPECT_TRUE(desk.conflictPrompt.shown);
}

TEST(ConductorSync, whatCannotBeDecodedIsNotTakenOverAndIsKeptBeforeItIsReplaced) {
    for (const char* key : {"commands", "oledSettings"}) {
        SharingDesktop desk;
        desk.share();
        desk.changeHere();
        const OLEDSettings settings = desk.conductor->oledSettings();
        const auto stored = desk.preferences.bytes(OLEDSettings::preferenceKey);
        SharedSet fromTheFuture = desk.othersSet(desk.clock.wallSeconds() + 10);
        fromTheFuture[key] = "something from the future";
        desk.sharedFolder.put(fromTheFuture);
        desk.pass(1);
        EXPECT_EQ(desk.conductor->oledSettings(), settings);
        EXPECT_EQ(desk.conductor->store().commands, CommandStore().commands);
        EXPECT_EQ(desk.preferences.bytes(OLEDSettings::preferenceKey), stored);
        EXPECT_EQ(desk.sharedFolder.present(), fromTheFuture) << "nothing is written over it";
        EXPECT_EQ(desk.sharedStore.status().condition, SharedStoreStatus::Condition::notUsable);

        desk.changeHere();
        EXPECT_EQ(desk.sharedTime(), desk.localTime());
        EXPECT_GT(desk.sharedTime(), changeTime(fromTheFuture));
        EXPECT_EQ(desk.sharedFolder.copies(), std::vector<SharedSet>{fromTheFuture});
        EXPECT_TRUE(desk.sharedStore.status().hasKeptUnusable);
    }
}

TEST(ConductorSync, whatCannotBeDecodedAtTheFirstContactIsLeftThere) {
    SharingDesktop desk;
    desk.conductor->startPreferenceSync();
    desk.changeHere();
    SharedSet fromTheFuture = desk.othersSet(1);
    fromTheFuture["commands"] = "something from the future";
    desk.sharedFolder.put(fromTheFuture);
    desk.sharedStore.setLocation(SimulatedSharedFolder::usualLocation);
    desk.pass(1);
    EXPECT_EQ(desk.sharedFolder.present(), fromTheFuture);
    desk.changeHere();
    EXPECT_EQ(desk.sharedTime(), desk.localTime());
    EXPECT_EQ(desk.sharedFolder.copies(), std::vector<SharedSet>{fromTheFuture});
}

TEST(ConductorSync, aChangeBeforeTheGrantIsNotLostToAnOlderSharedSet) {
    SharingDesktop desk;
    const double time = desk.clock.wallSeconds() - 100;
    desk.sharedFolder.put(desk.othersSet(time));
    desk.changeHere();
    const OLEDSettings changed = desk.conductor->oledSettings();
    EXPECT_GT(desk.localTime(), time);
    desk.share();
    EXPECT_EQ(desk.conductor->oledSettings(), changed);
    EXPECT_EQ(OLEDSettingsCodec::decode(desk.sharedFolder.present()["oledSettings"]), changed);
}

TEST(ConductorSync, afterTheEndNothingIsFollowed) {
    SharingDesktop desk;
    desk.share();
    desk.conductor->shutdown();
    desk.otherChanges(desk.clock.wallSeconds());
    EXPECT_FALSE(desk.hasOthersSettings());
    EXPECT_EQ(desk.localTime(), 0);
}

TEST(ConductorSync, startingTwiceIsStartingOnce) {
    SharingDesktop desk;
    desk.share();
    desk.conductor->startPreferenceSync();
    desk.otherChanges(desk.clock.wallSeconds());
    EXPECT_TRUE(desk.hasOthersSettings());
}

TEST(ConductorSync, onceTheConductorIsGoneNothingHappens) {
    SharingDesktop desk;
    desk.share();
    const double synced = desk.clock.wallSeconds() - 1000;
    desk.seedConflict(synced);
    desk.otherChanges(synced + 20);
    ASSERT_TRUE(desk.conflictPrompt.shown);
    const SharedSet later = desk.othersSet(synced + 30);
    desk.conductor.reset();
    desk.conflictPrompt.choose(false);
    desk.sharedFolder.put(later);
    desk.pass(1);
    EXPECT_EQ(desk.localTime(), synced + 10);
}

}  // namespace
}  // namespace lumatile
