#include "preference_sync/PreferenceSyncEngine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "preference_sync/SyncReason.h"
#include "preference_sync/SyncTimestamp.h"
#include "tests/unit/preference_sync/RecordedStore.h"

namespace lumatile {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

class PreferenceSyncEngineTest : public testing::Test {
protected:
    void setTimes(double localTime, double remoteTime, double lastSync) {
        set(local, "__ts", localTime);
        set(remote, "__ts", remoteTime);
        set(local, "__lastSync", lastSync);
    }

    /// 0 stands for a time that was never stored.
    static void set(RecordedStore& store, const std::string& key, double seconds) {
        if (seconds != 0) {
            store.values[key] = SyncTimestamp::encode(seconds);
        }
    }

    static double time(RecordedStore& store, std::string_view key) {
        return SyncTimestamp::decode(store.data(key));
    }

    RecordedStore::Journal journal;
    RecordedStore local{"local", journal};
    RecordedStore remote{"remote", journal};
    double now = 1000;
    PreferenceSyncEngine engine{
        local, remote, {"commands", "oledSettings"}, [this] { return now; }};
};

TEST_F(PreferenceSyncEngineTest, copiesNothingWhereNoSideHasATime) {
    local.values["commands"] = "[1]";
    remote.values["commands"] = "[2]";
    EXPECT_EQ(engine.sync(), SyncDirection::none);
    EXPECT_THAT(journal.writes, IsEmpty());
}

TEST_F(PreferenceSyncEngineTest, copiesNothingWhenTheTimesAreTheSame) {
    setTimes(200, 200, 100);
    local.values["commands"] = "[1]";
    remote.values["commands"] = "[2]";
    EXPECT_EQ(engine.sync(), SyncDirection::none);
    EXPECT_THAT(journal.writes, IsEmpty());
}

TEST_F(PreferenceSyncEngineTest, aNewerSharedSetComesHere) {
    setTimes(100, 200, 0);
    local.values["commands"] = "[1]";
    remote.values["commands"] = "[2]";
    remote.values["oledSettings"] = "{}";
    EXPECT_EQ(engine.sync(), SyncDirection::toLocal);
    EXPECT_EQ(local.data("commands"), "[2]");
    EXPECT_EQ(local.data("oledSettings"), "{}");
    EXPECT_EQ(time(local, "__ts"), 200);
    EXPECT_EQ(time(local, "__lastSync"), 200);
    EXPECT_THAT(journal.writes, ElementsAre("local commands", "local oledSettings", "local __ts",
                                            "local __lastSync"));
}

TEST_F(PreferenceSyncEngineTest, whatTheNewerSideLacksIsTakenAway) {
    setTimes(100, 200, 0);
    local.values["oledSettings"] = "{}";
    remote.values["commands"] = "[2]";
    EXPECT_EQ(engine.sync(), SyncDirection::toLocal);
    EXPECT_FALSE(local.data("oledSettings"));
    EXPECT_EQ(local.data("commands"), "[2]");
}

TEST_F(PreferenceSyncEngineTest, aNewerSetFromHereIsShared) {
    setTimes(300, 200, 250);
    local.values["commands"] = "[1]";
    remote.values["commands"] = "[2]";
    remote.values["oledSettings"] = "{}";
    EXPECT_EQ(engine.sync(), SyncDirection::toRemote);
    EXPECT_EQ(remote.data("commands"), "[1]");
    EXPECT_FALSE(remote.data("oledSettings"));
    EXPECT_EQ(time(remote, "__ts"), 300);
    EXPECT_EQ(time(local, "__lastSync"), 300);
    EXPECT_THAT(journal.writes, ElementsAre("remote commands", "remote oledSettings", "remote __ts",
                                            "local __lastSync", "remote"));
}

TEST_F(PreferenceSyncEngineTest, asksWhenBothChangedSinceTheLastSync) {
    setTimes(300, 200, 150);
    EXPECT_EQ(engine.sync(), SyncDirection::conflict);
    EXPECT_THAT(journal.writes, IsEmpty());
    EXPECT_EQ(engine.conflictSummary(), (ConflictSummary{300, 200}));
}

TEST_F(PreferenceSyncEngineTest, asksAlsoWhenTheSharedSetIsTheNewer) {
    setTimes(200, 300, 150);
    EXPECT_EQ(engine.sync(), SyncDirection::conflict);
    EXPECT_THAT(journal.writes, IsEmpty());
}

TEST_F(PreferenceSyncEngineTest, aChangeAtTheVeryTimeOfTheLastSyncIsNoneSinceThen) {
    setTimes(150, 300, 150);
    EXPECT_EQ(engine.sync(), SyncDirection::toLocal);
    journal.writes.clear();
    setTimes(300, 150, 150);
    EXPECT_EQ(engine.sync(), SyncDirection::toRemote);
}

TEST_F(PreferenceSyncEngineTest, neverAsksOnAComputerThatHasNotSyncedYet) {
    setTimes(300, 200, 0);
    EXPECT_EQ(engine.sync(), SyncDirection::toRemote);
    local.values.clear();
    setTimes(300, 400, 0);
    EXPECT_EQ(engine.sync(), SyncDirection::toLocal);
}

TEST_F(PreferenceSyncEngineTest, neverAsksAfterALastSyncBeforeAllTime) {
    setTimes(300, 200, -5);
    EXPECT_EQ(engine.sync(), SyncDirection::toRemote);
}

TEST_F(PreferenceSyncEngineTest, aTimeOfFourBytesCountsAsNone) {
    local.values["__ts"] = Bytes("\1\2\3\4");
    remote.values["__ts"] = SyncTimestamp::encode(200);
    EXPECT_EQ(engine.sync(), SyncDirection::toLocal);
    EXPECT_EQ(time(local, "__ts"), 200);
}

TEST_F(PreferenceSyncEngineTest, aTimeThatIsNoNumberNeverComesHere) {
    remote.values["__ts"] = SyncTimestamp::encode(std::numeric_limits<double>::quiet_NaN());
    set(local, "__ts", 100);
    EXPECT_EQ(engine.sync(), SyncDirection::toRemote);
    EXPECT_EQ(time(remote, "__ts"), 100);
    EXPECT_EQ(engine.sync(), SyncDirection::none);
}

TEST_F(PreferenceSyncEngineTest, aChangeHereIsSharedAtOnce) {
    setTimes(300, 400, 250);
    local.values["commands"] = "[1]";
    remote.values["oledSettings"] = "{}";
    EXPECT_TRUE(engine.recordLocalChange());
    EXPECT_THAT(remote.values, UnorderedElementsAre(Pair("commands", "[1]"),
                                                    Pair("__ts", SyncTimestamp::encode(1000))));
    EXPECT_EQ(time(local, "__ts"), 1000);
    EXPECT_EQ(time(local, "__lastSync"), 1000);
    EXPECT_THAT(journal.writes, ElementsAre("local __ts", "remote commands", "remote oledSettings",
                                            "remote __ts", "local __lastSync", "remote"));
    EXPECT_EQ(engine.sync(), SyncDirection::none);
}

TEST_F(PreferenceSyncEngineTest, aClockThatIsBehindSharesAnOlderTime) {
    setTimes(5000, 5000, 5000);
    local.values["commands"] = "[1]";
    EXPECT_TRUE(engine.recordLocalChange());
    EXPECT_EQ(time(remote, "__ts"), 1000);
    EXPECT_EQ(engine.sync(), SyncDirection::none);
}

TEST_F(PreferenceSyncEngineTest, aConflictSettledForThisComputerIsShared) {
    setTimes(300, 200, 150);
    local.values["commands"] = "[1]";
    remote.values["commands"] = "[2]";
    remote.values["oledSettings"] = "{}";
    engine.solveConflict(true);
    EXPECT_EQ(remote.data("commands"), "[1]");
    EXPECT_FALSE(remote.data("oledSettings"));
    EXPECT_EQ(engine.conflictSummary(), (ConflictSummary{1000, 1000}));
    EXPECT_EQ(time(local, "__lastSync"), 1000);
    EXPECT_THAT(journal.writes, ElementsAre("remote commands", "remote oledSettings", "local __ts",
                                            "remote __ts", "remote", "local __lastSync"));
    EXPECT_EQ(engine.sync(), SyncDirection::none);
}

TEST_F(PreferenceSyncEngineTest, aConflictSettledForTheSharedSetComesHere) {
    setTimes(300, 200, 150);
    local.values["commands"] = "[1]";
    local.values["oledSettings"] = "{}";
    remote.values["commands"] = "[2]";
    engine.solveConflict(false);
    EXPECT_EQ(local.data("commands"), "[2]");
    EXPECT_FALSE(local.data("oledSettings"));
    EXPECT_EQ(engine.conflictSummary(), (ConflictSummary{1000, 1000}));
    EXPECT_EQ(time(local, "__lastSync"), 1000);
    EXPECT_THAT(journal.writes, ElementsAre("local commands", "local oledSettings", "local __ts",
                                            "remote __ts", "local __lastSync"));
    EXPECT_EQ(engine.sync(), SyncDirection::none);
}

TEST_F(PreferenceSyncEngineTest, copiesTheManagedKeysAlone) {
    setTimes(100, 200, 0);
    local.values["dragToSnapEnabled"] = "here";
    remote.values["dragToSnapEnabled"] = "there";
    remote.values["somethingElse"] = "x";
    EXPECT_EQ(engine.sync(), SyncDirection::toLocal);
    EXPECT_EQ(local.data("dragToSnapEnabled"), "here");
    EXPECT_FALSE(local.data("somethingElse"));
}

TEST_F(PreferenceSyncEngineTest, reasonsHaveTheCodesOfTheStores) {
    EXPECT_EQ(static_cast<int>(SyncReason::server), 0);
    EXPECT_EQ(static_cast<int>(SyncReason::initialSync), 1);
    EXPECT_EQ(static_cast<int>(SyncReason::quotaViolation), 2);
    EXPECT_EQ(static_cast<int>(SyncReason::account), 3);
}

// How a conflict comes about, and only so: a change was noted here and the process ended before it
// was shared, and another computer shared one meanwhile.
TEST_F(PreferenceSyncEngineTest, aChangeCutOffBeforeItWasSharedIsAskedAboutLater) {
    setTimes(500, 500, 500);
    local.values["commands"] = "[1]";
    journal.limit = 1;
    engine.recordLocalChange();
    journal = {};
    EXPECT_EQ(time(local, "__ts"), 1000);
    remote.values["__ts"] = SyncTimestamp::encode(800);
    EXPECT_EQ(engine.sync(), SyncDirection::conflict);
}

TEST_F(PreferenceSyncEngineTest, aChangeCutOffAnywhereIsSharedByTheNextSync) {
    for (std::size_t limit = 1; limit <= 6; ++limit) {
        local.values.clear();
        remote.values.clear();
        setTimes(500, 500, 500);
        local.values["commands"] = "[1]";
        local.values["oledSettings"] = "{1}";
        remote.values["commands"] = "[2]";
        remote.values["oledSettings"] = "{2}";
        journal = {{}, limit};
        engine.recordLocalChange();
        journal = {};
        // Where it came as far as the shared time, nothing is left to copy.
        const bool isShared = limit >= 4;
        EXPECT_EQ(engine.sync(), isShared ? SyncDirection::none : SyncDirection::toRemote) << limit;
        EXPECT_EQ(remote.data("commands"), "[1]") << limit;
        EXPECT_EQ(remote.data("oledSettings"), "{1}") << limit;
    }
}

TEST_F(PreferenceSyncEngineTest, aCopyHereCutOffAnywhereIsFinishedByTheNextSync) {
    for (std::size_t limit = 0; limit <= 4; ++limit) {
        local.values.clear();
        remote.values.clear();
        setTimes(500, 700, 500);
        local.values["commands"] = "[1]";
        local.values["oledSettings"] = "{1}";
        remote.values["commands"] = "[2]";
        remote.values["oledSettings"] = "{2}";
        journal = {{}, limit};
        engine.sync();
        journal = {};
        engine.sync();
        EXPECT_EQ(local.data("commands"), "[2]") << limit;
        EXPECT_EQ(local.data("oledSettings"), "{2}") << limit;
        EXPECT_EQ(time(local, "__ts"), 700) << limit;
    }
}

}  // namespace
}  // namespace lumatile
