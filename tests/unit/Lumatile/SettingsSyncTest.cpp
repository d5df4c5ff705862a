#include "Lumatile/SettingsSync.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Lumatile/UbiquitousStore.h"
#include "Lumatile/UserDefaultsStore.h"
#include "tests/unit/Lumatile/SyncedComputer.h"

namespace lumatile {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Values = std::pair<Bytes, Bytes>;

SharedSet setOf(double time, const Bytes& commands, const Bytes& oledSettings) {
    return {{"__ts", SyncTimestamp::encode(time)},
            {"commands", commands},
            {"oledSettings", oledSettings}};
}

class SettingsSyncTest : public testing::Test {
protected:
    /// A computer with settings of this time, in step with the shared folder at `lastSync`.
    void seed(SyncedComputer& computer, double time, double lastSync) {
        computer.preferences.setBytes("commands", "[here]");
        computer.preferences.setBytes("oledSettings", "{here}");
        computer.preferences.setBytes("__ts", SyncTimestamp::encode(time));
        computer.preferences.setBytes("__lastSync", SyncTimestamp::encode(lastSync));
    }

    SimulatedClock clock;
    SimulatedRunLoop runLoop{clock};
    SimulatedSharedFolder sharedFolder{clock, runLoop};
};

TEST_F(SettingsSyncTest, startTakesOverANewerSet) {
    sharedFolder.put(setOf(200, "[there]", "{there}"));
    SyncedComputer computer(sharedFolder.join(SimulatedSharedFolder::usualLocation, false),
                            runLoop);
    pass(runLoop, 1);
    seed(computer, 100, 100);
    computer.sync->start();
    EXPECT_THAT(computer.calls, ElementsAre("commands", "oled"));
    EXPECT_EQ(computer.values(), Values("[there]", "{there}"));
    EXPECT_EQ(computer.time("__ts"), 200);
    EXPECT_EQ(computer.time("__lastSync"), 200);
}

TEST_F(SettingsSyncTest, startSharesANewerSet) {
    sharedFolder.put(setOf(100, "[there]", "{there}"));
    SyncedComputer computer(sharedFolder.join(SimulatedSharedFolder::usualLocation, false),
                            runLoop);
    pass(runLoop, 1);
    seed(computer, 200, 100);
    computer.sync->start();
    pass(runLoop, 1);
    EXPECT_THAT(computer.calls, IsEmpty());
    EXPECT_EQ(sharedFolder.present(), setOf(200, "[here]", "{here}"));
}

TEST_F(SettingsSyncTest, startWaitsForTheFirstReading) {
    sharedFolder.put(setOf(200, "[there]", "{there}"));
    SimulatedSharedStore& store = sharedFolder.join(SimulatedSharedFolder::usualLocation, false);
    store.setOnline(false);
    SyncedComputer computer(store, runLoop);
    seed(computer, 100, 100);
    computer.sync->start();
    pass(runLoop, 60);
    EXPECT_THAT(computer.calls, IsEmpty());
    EXPECT_EQ(computer.values(), Values("[here]", "{here}"));
    EXPECT_EQ(sharedFolder.present(), setOf(200, "[there]", "{there}"));
    store.setOnline(true);
    pass(runLoop, 1);
    EXPECT_THAT(computer.calls, ElementsAre("commands", "oled"));
    EXPECT_EQ(computer.values(), Values("[there]", "{there}"));
}

TEST_F(SettingsSyncTest, aConflictAtTheStartIsPresentedByTheNextChange) {
    sharedFolder.put(setOf(200, "[there]", "{there}"));
    SyncedComputer computer(sharedFolder.join(SimulatedSharedFolder::usualLocation, false),
                            runLoop);
    seed(computer, 300, 150);
    computer.sync->start();
    pass(runLoop, 1);
    ASSERT_TRUE(computer.store.hasBeenRead());
    EXPECT_THAT(computer.calls, IsEmpty());
    sharedFolder.put(setOf(250, "[more]", "{more}"));
    pass(runLoop, 1);
    EXPECT_THAT(computer.calls, ElementsAre("conflict"));
    EXPECT_THAT(computer.conflicts, ElementsAre(ConflictSummary{300, 250}));
    EXPECT_EQ(computer.values(), Values("[here]", "{here}"));
    // Closed without a choice, it comes back.
    sharedFolder.put(setOf(260, "[yet more]", "{yet more}"));
    pass(runLoop, 1);
    EXPECT_THAT(computer.calls, ElementsAre("conflict", "conflict"));
}

TEST_F(SettingsSyncTest, aConflictSettledForThisComputerIsSharedAndApplied) {
    sharedFolder.put(setOf(200, "[there]", "{there}"));
    SyncedComputer computer(sharedFolder.join(), runLoop);
    seed(computer, 300, 150);
    computer.sync->start();
    pass(runLoop, 1);
    EXPECT_THAT(computer.calls, ElementsAre("conflict")) << "the first contact is a change";
    const double settled = computer.now();
    computer.sync->settleConflict(true);
    EXPECT_THAT(computer.calls, ElementsAre("conflict", "commands", "oled"));
    pass(runLoop, 1);
    EXPECT_EQ(sharedFolder.present(), setOf(settled, "[here]", "{here}"));
    EXPECT_EQ(computer.time("__lastSync"), settled);
}

TEST_F(SettingsSyncTest, aConflictSettledForTheSharedSetComesHereAndIsShared) {
    sharedFolder.put(setOf(200, "[there]", "{there}"));
    SyncedComputer computer(sharedFolder.join(), runLoop);
    seed(computer, 300, 150);
    computer.sync->start();
    pass(runLoop, 1);
    const double settled = computer.now();
    computer.sync->settleConflict(false);
    EXPECT_THAT(computer.calls, ElementsAre("conflict", "commands", "oled"));
    EXPECT_EQ(computer.values(), Values("[there]", "{there}"));
    pass(runLoop, 1);
    // Its time travels without being asked for.
    EXPECT_EQ(sharedFolder.present(), setOf(settled, "[there]", "{there}"));
}

TEST_F(SettingsSyncTest, aChangeOfTheUserReachesTheOtherComputer) {
    SyncedComputer one(sharedFolder.join(), runLoop);
    SyncedComputer two(sharedFolder.join(), runLoop);
    one.sync->start();
    two.sync->start();
    pass(runLoop, 1);
    one.edit("commands", "[1]");
    pass(runLoop, 1);
    EXPECT_EQ(two.values(), Values("[1]", ""));
    EXPECT_THAT(one.calls, IsEmpty());
    EXPECT_THAT(two.calls, ElementsAre("commands", "oled"));
    two.edit("oledSettings", "{2}");
    pass(runLoop, 1);
    EXPECT_EQ(one.values(), Values("[1]", "{2}"));
    EXPECT_THAT(one.calls, ElementsAre("commands", "oled"));
}

TEST_F(SettingsSyncTest, whatWasTakenOverIsNotRecordedAgain) {
    SyncedComputer one(sharedFolder.join(), runLoop);
    SyncedComputer two(sharedFolder.join(), runLoop, 60);
    one.sync->start();
    two.sync->start();
    pass(runLoop, 1);
    const double edited = one.now();
    one.edit("commands", "[1]");
    pass(runLoop, 60);
    EXPECT_EQ(two.time("__ts"), edited);
    EXPECT_EQ(one.time("__ts"), edited);
    EXPECT_EQ(changeTime(sharedFolder.present()), edited);
}

TEST_F(SettingsSyncTest, changesWithoutRoomOfALocationOrOfAnUnknownKindAreIgnored) {
    SyncedComputer computer(sharedFolder.join(SimulatedSharedFolder::usualLocation, false),
                            runLoop);
    sharedFolder.put(setOf(200, "[there]", "{there}"));
    computer.sync->start();
    pass(runLoop, 1);
    ASSERT_EQ(computer.calls.size(), 2U);
    // Seeded so that whoever looks has something to do.
    seed(computer, 100, 100);
    for (const std::optional<int> code : {std::optional<int>(), std::optional(2), std::optional(3),
                                          std::optional(4), std::optional(-1)}) {
        computer.store.tell(code);
        runLoop.settle();
        EXPECT_EQ(computer.calls.size(), 2U) << code.value_or(99);
        EXPECT_EQ(computer.time("__ts"), 100);
    }
    computer.store.tell(1);
    runLoop.settle();
    EXPECT_EQ(computer.calls.size(), 4U);
    seed(computer, 100, 100);
    computer.store.tell(0);
    runLoop.settle();
    EXPECT_EQ(computer.calls.size(), 6U);
}

TEST_F(SettingsSyncTest, anotherLocationIsComparedWithByTimeAlone) {
    SyncedComputer computer(sharedFolder.join(), runLoop);
    computer.sync->start();
    pass(runLoop, 1);
    computer.edit("commands", "[here]");
    const double edited = computer.time("__ts");
    pass(runLoop, 1);
    sharedFolder.put(setOf(edited + 5, "[newer]", "{newer}"), "newer");
    sharedFolder.put(setOf(edited - 5, "[older]", "{older}"), "older");
    computer.sync->setLocation("older");
    pass(runLoop, 1);
    EXPECT_EQ(sharedFolder.present("older").at("commands"), "[here]");
    EXPECT_THAT(computer.calls, IsEmpty());
    computer.sync->setLocation("newer");
    pass(runLoop, 1);
    EXPECT_EQ(computer.values(), Values("[newer]", "{newer}"));
    EXPECT_THAT(computer.calls, ElementsAre("commands", "oled"));
}

TEST_F(SettingsSyncTest, whatWasChangedWithoutALocationIsSharedWhenOneIsNamed) {
    SyncedComputer computer(sharedFolder.join(std::nullopt), runLoop);
    computer.sync->start();
    computer.edit("commands", "[1]");
    pass(runLoop, 1);
    computer.sync->setLocation(SimulatedSharedFolder::usualLocation);
    pass(runLoop, 1);
    EXPECT_EQ(sharedFolder.present().at("commands"), "[1]");
}

TEST_F(SettingsSyncTest, nothingIsSharedBeforeTheStart) {
    SyncedComputer computer(sharedFolder.join(), runLoop);
    sharedFolder.put(setOf(200, "[there]", "{there}"));
    pass(runLoop, 1);
    computer.edit("commands", "[here]");
    computer.sync->settleConflict(true);
    pass(runLoop, 1);
    EXPECT_EQ(computer.time("__lastSync"), 0);
    EXPECT_EQ(sharedFolder.present().at("commands"), "[there]");
    EXPECT_THAT(computer.calls, IsEmpty());
}

TEST_F(SettingsSyncTest, aSecondStartFollowsNothingTwice) {
    SyncedComputer computer(sharedFolder.join(SimulatedSharedFolder::usualLocation, false),
                            runLoop);
    computer.sync->start();
    computer.sync->start();
    pass(runLoop, 1);
    sharedFolder.put(setOf(200, "[there]", "{there}"));
    pass(runLoop, 1);
    EXPECT_THAT(computer.calls, ElementsAre("commands", "oled"));
}

TEST_F(SettingsSyncTest, nothingIsFollowedAfterTheEnd) {
    SyncedComputer computer(sharedFolder.join(), runLoop);
    computer.sync->start();
    pass(runLoop, 1);
    computer.sync->stop();
    sharedFolder.put(setOf(200, "[there]", "{there}"));
    pass(runLoop, 1);
    EXPECT_THAT(computer.calls, IsEmpty());
    computer.sync.reset();
    sharedFolder.put(setOf(300, "[there]", "{there}"));
    pass(runLoop, 1);
}

TEST_F(SettingsSyncTest, theWindowIsToldOfTheStatus) {
    SyncedComputer computer(sharedFolder.join(std::nullopt), runLoop);
    computer.sync->start();
    std::vector<SharedStoreStatus::Condition> seen;
    computer.sync->onStatusChange([&] { seen.push_back(computer.sync->status().condition); });
    computer.sync->setLocation(SimulatedSharedFolder::usualLocation);
    pass(runLoop, 1);
    computer.edit("commands", "[1]");
    computer.store.setFull(true);
    pass(runLoop, 1);
    using Condition = SharedStoreStatus::Condition;
    EXPECT_THAT(seen, testing::Contains(Condition::current));
    EXPECT_THAT(seen, testing::Contains(Condition::notWritable));
    EXPECT_EQ(computer.sync->status().location, SimulatedSharedFolder::usualLocation);
}

TEST(UbiquitousStore, reasonsComeFromTheCodesOfTheStore) {
    EXPECT_EQ(UbiquitousStore::reason({0}), SyncReason::server);
    EXPECT_EQ(UbiquitousStore::reason({1}), SyncReason::initialSync);
    EXPECT_EQ(UbiquitousStore::reason({2}), SyncReason::quotaViolation);
    EXPECT_EQ(UbiquitousStore::reason({3}), SyncReason::account);
    for (const int other : {-1, 4, 5, 1 << 30}) {
        EXPECT_EQ(UbiquitousStore::reason({other}), std::nullopt) << other;
    }
    EXPECT_EQ(UbiquitousStore::reason({}), std::nullopt);
}

TEST(UserDefaultsStore, isTheUsersStoredSettings) {
    SimulatedLog log;
    SimulatedClock clock;
    SimulatedRunLoop runLoop(clock);
    SimulatedPreferences preferences(log, runLoop);
    UserDefaultsStore store(preferences);
    EXPECT_FALSE(store.data("commands"));
    store.set("[1]", "commands");
    store.synchronize();
    EXPECT_EQ(preferences.bytes("commands"), "[1]");
    EXPECT_EQ(store.data("commands"), "[1]");
    store.set(std::nullopt, "commands");
    EXPECT_FALSE(store.data("commands"));
    EXPECT_TRUE(preferences.disk().empty());
    // A value of another type is none.
    preferences.setBoolean("oledSettings", true);
    EXPECT_FALSE(store.data("oledSettings"));
}

}  // namespace
}  // namespace lumatile
