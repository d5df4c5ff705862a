#include "preference_sync/SharedSetReplica.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "preference_sync/SyncTimestamp.h"
#include "tests/unit/preference_sync/SharedSetArbitrary.h"

namespace lumatile {
namespace {

SharedSet setOf(double time, const Bytes& commands) {
    return {{"__ts", SyncTimestamp::encode(time)}, {"commands", commands}};
}

void change(SharedSetReplica& replica, double time, const Bytes& commands) {
    replica.set(commands, "commands");
    replica.set(SyncTimestamp::encode(time), "__ts");
}

TEST(SharedSetReplica, knowsNothingBeforeTheFirstReading) {
    SharedSetReplica replica;
    EXPECT_FALSE(replica.hasBeenRead());
    EXPECT_FALSE(replica.data("commands"));
    EXPECT_TRUE(replica.found(setOf(1, "there")));
    EXPECT_TRUE(replica.hasBeenRead());
    EXPECT_EQ(replica.data("commands"), "there");
}

TEST(SharedSetReplica, anEmptyLocationCountsAsRead) {
    SharedSetReplica replica;
    EXPECT_TRUE(replica.found({}));
    EXPECT_TRUE(replica.hasBeenRead());
    EXPECT_FALSE(replica.data("commands"));
}

TEST(SharedSetReplica, isSilentAboutWhatItKnows) {
    SharedSetReplica replica;
    replica.found(setOf(1, "there"));
    EXPECT_FALSE(replica.found(setOf(1, "there")));
    EXPECT_TRUE(replica.found(setOf(1, "other")));
}

TEST(SharedSetReplica, answersItsOwnChangeBeforeItIsSent) {
    SharedSetReplica replica;
    replica.found(setOf(1, "there"));
    change(replica, 2, "here");
    EXPECT_EQ(replica.data("commands"), "here");
    EXPECT_EQ(replica.unsent(), setOf(2, "here"));
    replica.sent(setOf(2, "here"));
    EXPECT_FALSE(replica.unsent());
    EXPECT_EQ(replica.data("commands"), "here");
    EXPECT_FALSE(replica.found(setOf(2, "here")));
}

TEST(SharedSetReplica, aChangeDuringTheSendingIsSentNext) {
    SharedSetReplica replica;
    replica.found({});
    change(replica, 2, "here");
    const SharedSet sending = *replica.unsent();
    change(replica, 3, "later");
    replica.sent(sending);
    EXPECT_EQ(replica.unsent(), setOf(3, "later"));
    EXPECT_EQ(replica.accepted(), sending);
}

/// This computer's set was made on one of that time; what says "?" cannot be used.
SharedSetAdvice advice(double madeOn) {
    return {[](const SharedSet& set) {
                const auto commands = set.find("commands");
                return commands == set.end() || commands->second != "?";
            },
            [madeOn] { return madeOn; }};
}

TEST(SharedSetReplica, whatWasChangedElsewhereMeanwhileIsUnusedWhenItIsReplaced) {
    SharedSetReplica replica;
    replica.heed(advice(1));
    replica.found(setOf(1, "old"));
    EXPECT_FALSE(replica.replacesUnused()) << "nothing replaces it";
    change(replica, 5, "here");
    EXPECT_FALSE(replica.replacesUnused()) << "it was made on that";
    replica.found(setOf(3, "there"));
    EXPECT_TRUE(replica.replacesUnused());
    replica.sent(setOf(5, "here"));
    EXPECT_FALSE(replica.replacesUnused());
    change(replica, 6, "here, too");
    EXPECT_FALSE(replica.replacesUnused()) << "its own, of which nobody was told yet";
}

TEST(SharedSetReplica, whatWasChangedBeforeTheFirstReadingMayHaveBeenMadeOnWhatIsFound) {
    for (const bool isMadeOnIt : {true, false}) {
        SharedSetReplica replica;
        replica.heed(advice(isMadeOnIt ? 3 : 1));
        change(replica, 5, "here");
        replica.found(setOf(3, "there"));
        EXPECT_EQ(replica.replacesUnused(), !isMadeOnIt);
    }
    SharedSetReplica replica;
    replica.heed(advice(1));
    change(replica, 5, "here");
    replica.found({});
    EXPECT_FALSE(replica.replacesUnused()) << "nothing lies there";
}

TEST(SharedSetReplica, whatCannotBeUsedIsNotAnswered) {
    SharedSetReplica replica;
    replica.heed(advice(1));
    replica.found(setOf(1, "old"));
    EXPECT_FALSE(replica.found(setOf(2, "?")));
    EXPECT_TRUE(replica.isWithheld());
    EXPECT_EQ(replica.data("commands"), "old");
    EXPECT_EQ(replica.data("__ts"), SyncTimestamp::encode(1));
    change(replica, 3, "here");
    EXPECT_TRUE(replica.replacesUnused());
    replica.sent(setOf(3, "here"));
    EXPECT_FALSE(replica.isWithheld());
    replica.found(setOf(4, "?"));
    EXPECT_TRUE(replica.found(setOf(5, "there")));
    EXPECT_FALSE(replica.isWithheld());
    EXPECT_EQ(replica.data("commands"), "there");
}

TEST(SharedSetReplica, aChangeIsNotSentOverALaterOneThatCannotBeUsed) {
    SharedSetReplica replica;
    replica.heed(advice(1));
    replica.found(setOf(1, "old"));
    change(replica, 3, "here");
    EXPECT_FALSE(replica.found(setOf(4, "?")));
    EXPECT_FALSE(replica.unsent());
    EXPECT_EQ(replica.data("commands"), "here") << "nothing here becomes older by it";
    change(replica, 5, "here");
    EXPECT_FALSE(replica.found(setOf(4.5, "?")));
    EXPECT_TRUE(replica.unsent());
    EXPECT_TRUE(replica.replacesUnused());
}

TEST(SharedSetReplica, adviceThatComesLaterHoldsForWhatWasFoundBefore) {
    SharedSetReplica replica;
    replica.found(setOf(2, "?"));
    EXPECT_EQ(replica.data("commands"), "?");
    replica.heed(advice(1));
    EXPECT_TRUE(replica.isWithheld());
    EXPECT_TRUE(replica.hasBeenRead());
    EXPECT_FALSE(replica.data("commands"));
    replica.heed({});
    EXPECT_FALSE(replica.isWithheld());
    EXPECT_EQ(replica.data("commands"), "?");
}

TEST(SharedSetReplica, ofTwoChangesTheLaterCounts) {
    SharedSetReplica replica;
    replica.found(setOf(1, "old"));
    change(replica, 3, "here");
    EXPECT_FALSE(replica.found(setOf(2, "there")));
    EXPECT_EQ(replica.data("commands"), "here");
    EXPECT_TRUE(replica.unsent());
    EXPECT_TRUE(replica.found(setOf(4, "there")));
    EXPECT_EQ(replica.data("commands"), "there");
    EXPECT_FALSE(replica.unsent());
}

TEST(SharedSetReplica, atTheSameTimeItsOwnCounts) {
    SharedSetReplica replica;
    replica.found(setOf(1, "old"));
    change(replica, 3, "here");
    EXPECT_FALSE(replica.found(setOf(3, "there")));
    EXPECT_EQ(replica.unsent(), setOf(3, "here"));
}

TEST(SharedSetReplica, aClockThatIsBehindChangesWhatWasReadAllTheSame) {
    SharedSetReplica replica;
    replica.found(setOf(5, "old"));
    change(replica, 3, "here");
    EXPECT_FALSE(replica.found(setOf(5, "old")));
    EXPECT_EQ(replica.unsent(), setOf(3, "here"));
}

TEST(SharedSetReplica, aChangeBeforeTheFirstReadingCountsByItsTime) {
    SharedSetReplica older;
    change(older, 3, "here");
    EXPECT_TRUE(older.found(setOf(5, "there")));
    EXPECT_EQ(older.data("commands"), "there");
    SharedSetReplica newer;
    change(newer, 7, "here");
    EXPECT_FALSE(newer.found(setOf(5, "there")));
    EXPECT_EQ(newer.unsent(), setOf(7, "here"));
}

TEST(SharedSetReplica, whatItDoesNotKnowStays) {
    SharedSetReplica replica;
    SharedSet later = setOf(1, "there");
    later["somethingLater"] = "x";
    replica.found(later);
    change(replica, 2, "here");
    replica.set(std::nullopt, "oledSettings");
    EXPECT_EQ(replica.unsent()->at("somethingLater"), "x");
    replica.set(std::nullopt, "commands");
    EXPECT_FALSE(replica.data("commands"));
}

TEST(SharedSetReplica, whatCouldNotBeSentCanBeGivenUp) {
    SharedSetReplica replica;
    replica.found(setOf(1, "there"));
    change(replica, 2, "here");
    replica.dropUnsent();
    EXPECT_EQ(replica.data("commands"), "there");
}

RC_GTEST_PROP(SharedSetReplica, answersOneWholeSetAtAnyTime, ()) {
    SharedSetReplica replica;
    std::vector<SharedSet> whole{{}};
    const auto steps = *rc::gen::inRange(1, 20);
    for (int step = 0; step < steps; ++step) {
        if (*rc::gen::arbitrary<bool>()) {
            whole.push_back(arbitrarySharedSet());
            const auto before = replica.unsent() ? replica.unsent() : replica.accepted();
            const bool isNews = replica.found(whole.back());
            const auto after = replica.unsent() ? replica.unsent() : replica.accepted();
            RC_ASSERT(isNews == (after != before) || after == whole.back());
        } else {
            SharedSet own = arbitrarySharedSet();
            for (const char* key : {"commands", "oledSettings", "somethingLater", "__ts"}) {
                const auto value = own.find(key);
                replica.set(value == own.end() ? std::nullopt : std::optional(value->second), key);
            }
            RC_ASSERT(replica.unsent() == own);
            whole.push_back(own);
        }
        SharedSet seen;
        for (const char* key : {"commands", "oledSettings", "somethingLater", "__ts"}) {
            if (const auto value = replica.data(key)) {
                seen[key] = *value;
            }
        }
        RC_ASSERT(std::find(whole.begin(), whole.end(), seen) != whole.end());
    }
}

}  // namespace
}  // namespace lumatile
