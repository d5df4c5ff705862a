// Changes that were made independently of each other, and clocks that differ.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/Lumatile/SyncedComputer.h"

namespace lumatile {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Values = std::pair<Bytes, Bytes>;

class SettingsSyncCopies : public testing::Test {
protected:
    SettingsSyncCopies() {
        one.sync->start();
        two.sync->start();
        pass(runLoop, 1);
        one.edit("commands", "[common]");
        pass(runLoop, 1);
    }

    static Bytes commandsOf(const SharedSet& set) { return set.at("commands"); }

    std::vector<Bytes> copies() {
        std::vector<Bytes> all;
        for (const SharedSet& set : sharedFolder.copies()) {
            all.push_back(set.at("commands"));
        }
        return all;
    }

    SimulatedClock clock;
    SimulatedRunLoop runLoop{clock};
    SimulatedSharedFolder sharedFolder{clock, runLoop};
    SyncedComputer one{sharedFolder.join(), runLoop};
    SyncedComputer two{sharedFolder.join(), runLoop};
};

TEST_F(SettingsSyncCopies, inTurnsNothingIsKept) {
    for (int round = 0; round < 3; ++round) {
        one.edit("commands", "[1]");
        one.edit("commands", "[1, too]");
        pass(runLoop, 1);
        two.edit("commands", "[2]");
        pass(runLoop, 1);
        one.restart();
        two.restart();
        pass(runLoop, 1);
    }
    EXPECT_EQ(one.values(), two.values());
    EXPECT_THAT(copies(), IsEmpty());
}

TEST_F(SettingsSyncCopies, withTheFolderAwayAndNoOtherChangeNothingIsKept) {
    one.store.setOnline(false);
    one.edit("commands", "[1]");
    pass(runLoop, 1);
    one.restart();
    one.edit("commands", "[1, too]");
    pass(runLoop, 1);
    one.store.setOnline(true);
    pass(runLoop, 1);
    EXPECT_EQ(two.values().first, "[1, too]");
    EXPECT_THAT(copies(), IsEmpty());
}

TEST_F(SettingsSyncCopies, anEditWinsOverWhatItWasMadeOnAlsoBeforeTheFolderIsReadAgain) {
    SyncedComputer ahead(sharedFolder.join(), runLoop, 4);
    ahead.sync->start();
    pass(runLoop, 1);
    ahead.edit("commands", "[ahead]");
    pass(runLoop, 1);
    ASSERT_EQ(two.values().first, "[ahead]");
    const double madeOn = two.time("__ts");
    two.store.setOnline(false);
    two.editAndEnd("commands", "[cut off]");  // By a clock that is behind.
    ASSERT_LT(two.time("__ts"), madeOn);
    two.edit("oledSettings", "{}");
    EXPECT_GT(two.time("__ts"), madeOn);
    two.store.setOnline(true);
    pass(runLoop, 1);
    for (SyncedComputer* computer : {&one, &two, &ahead}) {
        EXPECT_EQ(computer->values(), Values("[cut off]", "{}"));
    }
    EXPECT_THAT(copies(), IsEmpty());
}

TEST_F(SettingsSyncCopies, ofTwoChangesOfTheVerySameTimeNoneIsTakenForTheOther) {
    two.store.setFull(true);
    one.edit("commands", "[1]");
    two.edit("commands", "[2]");
    ASSERT_EQ(one.time("__ts"), two.time("__ts"));
    pass(runLoop, 1);
    two.restart();
    pass(runLoop, 1);
    ASSERT_EQ(two.values().first, "[2]") << "neither is later";
    two.store.setFull(false);
    sharedFolder.resend();
    pass(runLoop, 1);
    one.edit("commands", "[later]");
    pass(runLoop, 1);
    EXPECT_EQ(two.values().first, "[later]");
    EXPECT_THAT(copies(), ElementsAre("[2]"));
}

/// The change of a computer that does not see the folder, which perhaps is started anew meanwhile,
/// and a later one on the other.
class SettingsSyncCopiesAway : public SettingsSyncCopies, public testing::WithParamInterface<bool> {
protected:
    void comeBack() {
        if (GetParam()) {
            one.restart();
        }
        one.store.setOnline(true);
        pass(runLoop, 1);
    }
};

TEST_P(SettingsSyncCopiesAway, theOlderChangeIsKeptWhenItWasMadeHere) {
    one.store.setOnline(false);
    one.edit("commands", "[1]");
    pass(runLoop, 1);
    two.edit("commands", "[2]");
    pass(runLoop, 1);
    comeBack();
    EXPECT_EQ(one.values().first, "[2]");
    EXPECT_EQ(two.values().first, "[2]");
    EXPECT_THAT(copies(), ElementsAre("[1]"));
    EXPECT_TRUE(one.store.status().hasKeptOwn);
    EXPECT_FALSE(two.store.status().hasKeptOwn);
    EXPECT_FALSE(one.store.status().hasKeptOthers);
}

TEST_P(SettingsSyncCopiesAway, theOlderChangeIsKeptWhenItWasMadeElsewhere) {
    one.store.setOnline(false);
    two.edit("commands", "[2]");
    pass(runLoop, 1);
    one.edit("commands", "[1]");
    pass(runLoop, 1);
    comeBack();
    EXPECT_EQ(one.values().first, "[1]");
    EXPECT_EQ(two.values().first, "[1]");
    EXPECT_THAT(copies(), ElementsAre("[2]"));
    EXPECT_TRUE(one.store.status().hasKeptOthers);
    EXPECT_FALSE(one.store.status().hasKeptOwn);
}

INSTANTIATE_TEST_SUITE_P(StartedAnew, SettingsSyncCopiesAway, testing::Bool());

TEST_F(SettingsSyncCopies, aChangeOverAnOpenQuestionKeepsWhatItReplaces) {
    one.preferences.setBytes("commands", "[1]");
    one.preferences.setBytes("__ts", SyncTimestamp::encode(one.now() + 1));
    pass(runLoop, 2);
    two.edit("commands", "[2]");
    pass(runLoop, 1);
    ASSERT_THAT(one.calls, testing::Contains("conflict"));
    one.edit("commands", "[1, too]");
    pass(runLoop, 1);
    EXPECT_EQ(two.values().first, "[1, too]");
    EXPECT_THAT(copies(), ElementsAre("[2]"));
}

TEST_F(SettingsSyncCopies, ofTwoLocationsTheOlderSetIsKept) {
    const double now = one.now();
    sharedFolder.put({{"__ts", SyncTimestamp::encode(now - 50)}, {"commands", "[older]"}}, "old");
    one.sync->setLocation("old");
    pass(runLoop, 1);
    EXPECT_EQ(commandsOf(sharedFolder.present("old")), "[common]");
    ASSERT_EQ(sharedFolder.copies("old").size(), 1U);
    EXPECT_EQ(commandsOf(sharedFolder.copies("old").front()), "[older]");
}

TEST_F(SettingsSyncCopies, aChangeBeforeTheStartIsLaterThanAnOlderSharedSet) {
    SyncedComputer third(sharedFolder.join(), runLoop);
    third.edit("commands", "[3]");
    pass(runLoop, 1);
    EXPECT_GT(third.time("__ts"), one.time("__ts"));
    EXPECT_EQ(third.time("__lastSync"), 0);
    third.sync->start();
    pass(runLoop, 1);
    EXPECT_EQ(third.values().first, "[3]");
    EXPECT_EQ(one.values().first, "[3]");
    EXPECT_THAT(copies(), ElementsAre("[common]"));
}

TEST_F(SettingsSyncCopies, aChangeBeforeTheStartIsKeptWhenTheSharedSetIsLater) {
    SyncedComputer third(sharedFolder.join(), runLoop);
    third.edit("commands", "[3]");
    pass(runLoop, 1);
    one.edit("commands", "[later]");
    pass(runLoop, 1);
    third.sync->start();
    pass(runLoop, 1);
    EXPECT_EQ(third.values().first, "[later]");
    EXPECT_THAT(copies(), ElementsAre("[3]"));
    EXPECT_TRUE(third.store.status().hasKeptOwn);
}

TEST_F(SettingsSyncCopies, anEditWinsOverWhatItWasMadeOnWhateverTheClocksShow) {
    constexpr double anHour = 3600;
    SyncedComputer ahead(sharedFolder.join(), runLoop, anHour);
    ahead.sync->start();
    pass(runLoop, 1);
    ahead.edit("commands", "[ahead]");
    const double stamp = ahead.time("__ts");
    pass(runLoop, 1);
    EXPECT_GT(one.store.status().clockLead.value_or(0), anHour - 10);
    one.edit("commands", "[1]");
    EXPECT_DOUBLE_EQ(one.time("__ts"), stamp + 0.001);
    pass(runLoop, 1);
    EXPECT_EQ(ahead.values().first, "[1]");
    two.edit("commands", "[2]");
    two.restart();
    pass(runLoop, 1);
    two.edit("oledSettings", "{2}");
    pass(runLoop, 1);
    EXPECT_EQ(ahead.values(), Values("[2]", "{2}"));
    EXPECT_EQ(one.values(), Values("[2]", "{2}"));
    EXPECT_THAT(copies(), IsEmpty());
    // When that time has come everything is as usual.
    pass(runLoop, anHour);
    one.edit("commands", "[3]");
    EXPECT_EQ(one.time("__ts"), one.now());
    pass(runLoop, 1);
    EXPECT_EQ(one.store.status().clockLead, std::nullopt);
}

TEST_F(SettingsSyncCopies, aTimeThatNoClockShowsMovesNone) {
    one.preferences.setBytes("__ts", SyncTimestamp::encode(1e300));
    one.edit("commands", "[1]");
    EXPECT_EQ(one.time("__ts"), one.now());
}

}  // namespace
}  // namespace lumatile
