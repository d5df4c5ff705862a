#include "platform/freedesktop/sync_folder/SyncFolderLocation.h"

#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "preference_sync/SharedSetCodec.h"
#include "tests/support/StoringComputer.h"

namespace lumatile {
namespace {

using Condition = SharedStoreStatus::Condition;
using File = SyncFolderVisit::File;
using Outcome = SyncFolderLocation::Outcome;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double now = 1'000'000;
constexpr std::optional<SyncReason> otherwise = std::nullopt;

/// A visit that looked nowhere.
SyncFolderVisit visitThatFound(File file) {
    SyncFolderVisit visit(SyncFolderVisit::Errand{});
    visit.file = file;
    visit.readFailure = file == File::unreachable ? "no way" : "";
    return visit;
}

SyncFolderVisit visitThatFound(const SharedSet& set) {
    SyncFolderVisit visit = visitThatFound(File::good);
    visit.set = set;
    visit.text = SharedSetCodec::print(set).value();
    return visit;
}

SyncFolderVisit visitThatWrote(const SharedSet& set) {
    SyncFolderVisit visit = visitThatFound(set);
    visit.hasWritten = true;
    visit.isOwn = true;
    return visit;
}

SyncFolderVisit visitThatCouldNotWrite(const SharedSet& there) {
    SyncFolderVisit visit = visitThatFound(there);
    visit.writeFailure = "no room";
    return visit;
}

class SyncFolderLocationTest : public testing::Test {
protected:
    static SyncFolderLocation known() { return {"/shared", false}; }

    SyncFolderLocation location{"/shared", true};
};

TEST_F(SyncFolderLocationTest, nothingIsKnownAtFirst) {
    EXPECT_FALSE(location.hasBeenRead());
    EXPECT_FALSE(location.isHere());
    EXPECT_EQ(location.data("commands"), std::nullopt);
    const SharedStoreStatus status = location.status();
    EXPECT_EQ(status.condition, Condition::notReachable);
    EXPECT_EQ(status.location, "/shared");
    EXPECT_EQ(status.lastSynced, std::nullopt);
    EXPECT_EQ(status.failure, "");
}

TEST_F(SyncFolderLocationTest, theFirstReadingIsTheFirstContact) {
    EXPECT_THAT(location.take(visitThatFound(setOf(1, "a")), now).news,
                ElementsAre(SyncReason::initialSync, otherwise));
    EXPECT_FALSE(location.isFirstContact());
    EXPECT_EQ(location.data("commands"), "a");
    EXPECT_EQ(location.status().condition, Condition::current);
    EXPECT_EQ(location.status().lastSynced, now);
}

TEST_F(SyncFolderLocationTest, theFirstReadingOfAKnownFolderHasNoReason) {
    SyncFolderLocation other = known();
    EXPECT_THAT(other.take(visitThatFound(setOf(1, "a")), now).news,
                ElementsAre(otherwise, otherwise));
}

TEST_F(SyncFolderLocationTest, anEmptyFolderIsRead) {
    EXPECT_THAT(location.take(visitThatFound(File::absent), now).news,
                ElementsAre(SyncReason::initialSync, otherwise));
    EXPECT_TRUE(location.hasBeenRead());
    EXPECT_TRUE(location.isFirstContact()) << "until a file was seen";
    EXPECT_EQ(location.status().condition, Condition::current);
}

TEST_F(SyncFolderLocationTest, onlyAnotherSetIsNews) {
    location.take(visitThatFound(setOf(1, "a")), now);
    EXPECT_THAT(location.take(visitThatFound(setOf(1, "a")), now).news, ElementsAre(otherwise));
    EXPECT_THAT(location.take(visitThatFound(setOf(2, "b")), now).news,
                ElementsAre(SyncReason::server, otherwise));
    EXPECT_EQ(location.data("commands"), "b");
}

TEST_F(SyncFolderLocationTest, nothingIsWrittenBeforeItIsKnownWhatLiesThere) {
    location.set("mine", "commands");
    EXPECT_TRUE(location.hasUnsent());
    EXPECT_EQ(location.errand(0).text, std::nullopt);
    location.take(visitThatFound(File::absent), now);
    const SharedSet mine{{"commands", "mine"}};
    EXPECT_EQ(location.errand(0).text, SharedSetCodec::print(mine));
    EXPECT_EQ(location.errand(0).over, std::nullopt);
}

TEST_F(SyncFolderLocationTest, anErrandKnowsWhatItMayReplaceAndWhatIsOwn) {
    const SyncFolderVisit first = visitThatFound(setOf(3, "a"));
    location.take(first, now);
    const SyncFolderVisit::Errand errand = location.errand(7);
    EXPECT_EQ(errand.folder, "/shared");
    EXPECT_EQ(errand.over, first.text);
    EXPECT_EQ(errand.own, std::nullopt);
    EXPECT_EQ(errand.knownTime, 3);
    EXPECT_EQ(errand.restMilliseconds, 7);
    EXPECT_FALSE(errand.overAnything);
    EXPECT_FALSE(errand.mayBegin);
    const SyncFolderVisit second = visitThatWrote(setOf(4, "b"));
    location.take(second, now);
    EXPECT_EQ(location.errand(0).over, second.text);
    EXPECT_EQ(location.errand(0).own, second.text);
    location.take(first, now);
    EXPECT_EQ(location.errand(0).over, first.text);
    EXPECT_EQ(location.errand(0).own, second.text);
}

TEST_F(SyncFolderLocationTest, whatIsSentIsCurrentAndNoNews) {
    location.take(visitThatFound(File::absent), now);
    location.set("mine", "commands");
    EXPECT_EQ(location.status().condition, Condition::sending);
    const SharedSet mine{{"commands", "mine"}};
    EXPECT_THAT(location.take(visitThatWrote(mine), now + 1).news, ElementsAre(otherwise));
    EXPECT_FALSE(location.hasUnsent());
    EXPECT_EQ(location.status().condition, Condition::current);
    EXPECT_EQ(location.status().lastSynced, now + 1);
}

TEST_F(SyncFolderLocationTest, whatIsSetDuringAVisitWaitsForTheNext) {
    location.take(visitThatFound(File::absent), now);
    location.set("mine", "commands");
    const SharedSet sent{{"commands", "mine"}};
    location.set("newer", "commands");
    location.take(visitThatWrote(sent), now + 1);
    EXPECT_TRUE(location.hasUnsent());
    EXPECT_EQ(location.data("commands"), "newer");
    EXPECT_EQ(location.status().lastSynced, now);
}

TEST_F(SyncFolderLocationTest, aFailureToWriteIsToldOnceUntilItIsOver) {
    const SharedSet there = setOf(1, "a");
    location.take(visitThatFound(there), now);
    location.set("mine", "commands");
    const Outcome first = location.take(visitThatCouldNotWrite(there), now);
    EXPECT_THAT(first.news, ElementsAre(SyncReason::quotaViolation, otherwise));
    EXPECT_THAT(first.complaints, ElementsAre(HasSubstr("cannot be written: no room")));
    EXPECT_TRUE(location.hasFailedToWrite());
    EXPECT_EQ(location.status().condition, Condition::notWritable);
    EXPECT_EQ(location.status().failure, "no room");
    const Outcome second = location.take(visitThatCouldNotWrite(there), now);
    EXPECT_THAT(second.news, ElementsAre(otherwise));
    EXPECT_THAT(second.complaints, IsEmpty());
    SharedSet mine = there;
    mine["commands"] = "mine";
    location.take(visitThatWrote(mine), now);
    EXPECT_FALSE(location.hasFailedToWrite());
    EXPECT_EQ(location.status().condition, Condition::current);
    location.set("next", "commands");
    EXPECT_THAT(location.take(visitThatCouldNotWrite(mine), now).news,
                ElementsAre(SyncReason::quotaViolation, otherwise));
}

TEST_F(SyncFolderLocationTest, aFailureToReadIsComplainedOfOnceUntilItCanBeRead) {
    location.take(visitThatFound(setOf(1, "a")), now);
    EXPECT_THAT(location.take(visitThatFound(File::unreachable), now).complaints,
                ElementsAre("the folder /shared cannot be read: no way"));
    EXPECT_THAT(location.take(visitThatFound(File::unreachable), now).complaints, IsEmpty());
    EXPECT_EQ(location.status().condition, Condition::notReachable);
    EXPECT_EQ(location.status().failure, "no way");
    EXPECT_EQ(location.data("commands"), "a") << "answered from memory";
    location.take(visitThatFound(setOf(1, "a")), now);
    EXPECT_EQ(location.status().failure, "");
    EXPECT_THAT(location.take(visitThatFound(File::unreachable), now).complaints,
                ElementsAre("the folder /shared cannot be read: no way"));
}

TEST_F(SyncFolderLocationTest, whereNothingAnswersItCountsAsNotReachable) {
    location.take(visitThatFound(setOf(1, "a")), now);
    const Outcome outcome = location.noteSilence();
    EXPECT_THAT(outcome.complaints, ElementsAre("the folder /shared does not answer"));
    EXPECT_THAT(outcome.news, ElementsAre(otherwise));
    EXPECT_EQ(location.status().condition, Condition::notReachable);
    EXPECT_EQ(location.status().failure, "no answer");
    EXPECT_THAT(location.noteSilence().complaints, IsEmpty());
    const Outcome failed = location.noteFailure("out of memory");
    EXPECT_THAT(failed.complaints, IsEmpty());
    EXPECT_THAT(failed.news, ElementsAre(otherwise));
    EXPECT_EQ(location.status().failure, "out of memory");
}

TEST_F(SyncFolderLocationTest, aFileThatIsMissingIsSpokenOfWhenItIsLongGone) {
    SyncFolderLocation other = known();
    other.take(visitThatFound(setOf(1, "a")), now);
    EXPECT_FALSE(other.awaitsReturn());
    EXPECT_THAT(other.take(visitThatFound(File::absent), now).complaints, IsEmpty());
    EXPECT_EQ(other.status().condition, Condition::missing);
    EXPECT_TRUE(other.awaitsReturn());
    EXPECT_FALSE(other.isHere());
    EXPECT_EQ(other.data("commands"), "a");
    other.noteLongAbsence();
    EXPECT_FALSE(other.awaitsReturn());
    EXPECT_THAT(other.take(visitThatFound(File::absent), now).complaints,
                ElementsAre(HasSubstr("is gone")));
    EXPECT_THAT(other.take(visitThatFound(File::absent), now).complaints, IsEmpty());
    other.take(visitThatFound(setOf(1, "a")), now);
    EXPECT_TRUE(other.isHere());
    other.take(visitThatFound(File::absent), now);
    EXPECT_TRUE(other.awaitsReturn()) << "the next time it is waited for anew";
}

TEST_F(SyncFolderLocationTest, aDamagedFileIsLeftAloneUntilTheUserGivesItUp) {
    EXPECT_THAT(location.startAnew().news, IsEmpty());
    EXPECT_THAT(location.take(visitThatFound(File::damaged), now).complaints,
                ElementsAre(HasSubstr("is damaged or incomplete")));
    EXPECT_EQ(location.status().condition, Condition::damaged);
    EXPECT_FALSE(location.errand(0).overAnything);
    EXPECT_THAT(location.startAnew().news, ElementsAre(SyncReason::initialSync));
    EXPECT_TRUE(location.hasBeenRead());
    EXPECT_EQ(location.status().condition, Condition::current);
    EXPECT_TRUE(location.errand(0).overAnything);
    EXPECT_TRUE(location.errand(0).mayBegin);
    EXPECT_EQ(location.errand(0).over, std::nullopt);
    location.take(visitThatFound(File::damaged), now);
    EXPECT_TRUE(location.isHere()) << "it stays given up";
    EXPECT_THAT(location.startAnew().news, IsEmpty());
    location.take(visitThatFound(setOf(5, "theirs")), now);
    EXPECT_FALSE(location.errand(0).overAnything) << "until a good one lies there";
}

TEST_F(SyncFolderLocationTest, aMissingFileMayBeGivenUp) {
    SyncFolderLocation other = known();
    other.take(visitThatFound(setOf(1, "a")), now);
    other.take(visitThatFound(File::absent), now);
    EXPECT_THAT(other.startAnew().news, ElementsAre(SyncReason::initialSync));
    EXPECT_EQ(other.data("commands"), std::nullopt);
    EXPECT_EQ(other.errand(0).over, std::nullopt);
    other.take(visitThatFound(File::absent), now);
    EXPECT_TRUE(other.isHere());
}

TEST_F(SyncFolderLocationTest, whatIsTooLargeIsGivenUp) {
    location.take(visitThatFound(setOf(1, "a")), now);
    EXPECT_THAT(location.refuseTooLarge().news, IsEmpty()) << "nothing waits";
    location.set("b", "commands");
    EXPECT_THAT(location.refuseTooLarge().news, IsEmpty());
    location.set(Bytes(SharedStore::largestValue + 1, 'x'), "commands");
    const Outcome outcome = location.refuseTooLarge();
    EXPECT_THAT(outcome.news, ElementsAre(SyncReason::quotaViolation));
    EXPECT_THAT(outcome.complaints, ElementsAre("the settings are too large to be shared"));
    EXPECT_FALSE(location.hasUnsent());
    EXPECT_EQ(location.data("commands"), "a");
    EXPECT_EQ(location.status().condition, Condition::tooLarge);
    location.set("c", "commands");
    EXPECT_EQ(location.status().condition, Condition::sending);
    EXPECT_THAT(location.refuseTooLarge().news, IsEmpty());
    SharedSet set = setOf(1, "c");
    location.take(visitThatWrote(set), now);
    EXPECT_EQ(location.status().condition, Condition::current);
}

TEST_F(SyncFolderLocationTest, copiesThatWerePutAsideAreCounted) {
    SyncFolderVisit visit = visitThatFound(setOf(1, "a"));
    visit.copiesPutAside = 2;
    EXPECT_THAT(location.take(visit, now).complaints,
                ElementsAre("2 replaced or conflicting settings files were put into "
                            "/shared/lumatile-settings-copies"));
    visit.copiesPutAside = 1;
    location.take(visit, now);
    EXPECT_EQ(location.status().copiesPutAside, 3);
}

TEST_F(SyncFolderLocationTest, anotherLocationHasNothingOfTheFormer) {
    location.take(visitThatCouldNotWrite(setOf(1, "a")), now);
    location.set("b", "commands");
    location = SyncFolderLocation("/other", true);
    EXPECT_EQ(location.status(), SyncFolderLocation("/other", true).status());
    EXPECT_FALSE(location.hasBeenRead());
    EXPECT_FALSE(location.hasUnsent());
    EXPECT_FALSE(location.hasFailedToWrite());
    EXPECT_EQ(location.errand(0).over, std::nullopt);
}

}  // namespace
}  // namespace lumatile
