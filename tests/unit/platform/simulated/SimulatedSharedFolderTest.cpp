#include "platform/simulated/SimulatedSharedFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "preference_sync/SyncTimestamp.h"

namespace lumatile {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Condition = SharedStoreStatus::Condition;

SharedSet setOf(double time, const Bytes& commands) {
    return {{"__ts", SyncTimestamp::encode(time)}, {"commands", commands}};
}

class SimulatedSharedFolderTest : public testing::Test {
protected:
    /// A computer that writes down the codes that it is told.
    struct Computer {
        explicit Computer(SimulatedSharedStore& its)
            : store(its), watch(its.observe([this](const SharedStoreChange& change) {
                  if (change.reasonCode) {
                      told.push_back(*change.reasonCode);
                  }
              })) {}

        void change(double time, const Bytes& commands) {
            store.set(commands, "commands");
            store.set(SyncTimestamp::encode(time), "__ts");
            store.synchronize();
        }

        SimulatedSharedStore& store;
        std::vector<int> told;
        SharedStoreWatch watch;
    };

    SimulatedClock clock;
    SimulatedRunLoop runLoop{clock};
    SimulatedSharedFolder sharedFolder{clock, runLoop};
};

TEST_F(SimulatedSharedFolderTest, aSetReachesTheOtherComputers) {
    Computer one(sharedFolder.join());
    Computer two(sharedFolder.join());
    Computer three(sharedFolder.join());
    EXPECT_FALSE(one.store.hasBeenRead());
    EXPECT_EQ(one.store.status().condition, Condition::notReachable);
    runLoop.advance(1);
    EXPECT_THAT(one.told, ElementsAre(1));
    one.change(5, "[1]");
    EXPECT_EQ(one.store.data("commands"), "[1]");
    EXPECT_FALSE(two.store.data("commands"));
    EXPECT_EQ(one.store.status().condition, Condition::sending);
    runLoop.advance(1);
    EXPECT_EQ(two.store.data("commands"), "[1]");
    EXPECT_EQ(three.store.data("commands"), "[1]");
    EXPECT_THAT(one.told, ElementsAre(1));
    EXPECT_THAT(two.told, ElementsAre(1, 0));
    EXPECT_EQ(sharedFolder.present(), setOf(5, "[1]"));
    EXPECT_EQ(one.store.status().condition, Condition::current);
}

TEST_F(SimulatedSharedFolderTest, whatIsSetIsSentByItself) {
    Computer one(sharedFolder.join());
    runLoop.advance(1);
    one.store.set("[1]", "commands");
    runLoop.advance(1);
    EXPECT_EQ(sharedFolder.present(), (SharedSet{{"commands", "[1]"}}));
}

TEST_F(SimulatedSharedFolderTest, ofTwoChangesAtOnceTheLaterCounts) {
    Computer one(sharedFolder.join());
    Computer two(sharedFolder.join());
    runLoop.advance(1);
    one.change(6, "later");
    two.change(5, "earlier");
    runLoop.advance(1);
    EXPECT_EQ(sharedFolder.present(), setOf(6, "later"));
    EXPECT_EQ(two.store.data("commands"), "later");
    EXPECT_THAT(two.told, ElementsAre(1, 0));
}

TEST_F(SimulatedSharedFolderTest, newsMayBeLostLateOrUntold) {
    Computer one(sharedFolder.join());
    Computer two(sharedFolder.join());
    Computer three(sharedFolder.join());
    runLoop.advance(1);
    int passage = 0;
    sharedFolder.setRoute([&] {
        // The way of the first computer's set, then those to the others.
        ++passage;
        return SimulatedSharedFolder::Passage{passage == 3 ? 5.0 : 0.1, passage == 2, passage != 3};
    });
    one.change(5, "[1]");
    runLoop.advance(1);
    EXPECT_FALSE(two.store.data("commands"));
    EXPECT_FALSE(three.store.data("commands"));
    runLoop.advance(5);
    EXPECT_FALSE(two.store.data("commands"));
    EXPECT_EQ(three.store.data("commands"), "[1]");
    EXPECT_THAT(three.told, ElementsAre(1));
    sharedFolder.resend();
    runLoop.settle();
    EXPECT_EQ(two.store.data("commands"), "[1]");
    EXPECT_THAT(three.told, ElementsAre(1, 0));
}

TEST_F(SimulatedSharedFolderTest, aLaterSetMayArriveFirst) {
    Computer one(sharedFolder.join());
    Computer two(sharedFolder.join());
    runLoop.advance(1);
    double delay = 5;
    sharedFolder.setRoute([&] { return SimulatedSharedFolder::Passage{delay}; });
    sharedFolder.put(setOf(1, "first"));
    delay = 1;
    sharedFolder.put(setOf(2, "second"));
    runLoop.advance(2);
    EXPECT_EQ(two.store.data("commands"), "second");
    runLoop.advance(4);
    EXPECT_EQ(two.store.data("commands"), "first");
    EXPECT_EQ(sharedFolder.present(), setOf(2, "second"));
}

TEST_F(SimulatedSharedFolderTest, aComputerThatIsCutOffCatchesUp) {
    Computer one(sharedFolder.join());
    Computer two(sharedFolder.join());
    runLoop.advance(1);
    two.store.setOnline(false);
    one.change(5, "[1]");
    two.change(6, "[2]");
    runLoop.advance(1);
    EXPECT_EQ(two.store.data("commands"), "[2]");
    EXPECT_EQ(sharedFolder.present(), setOf(5, "[1]"));
    two.store.setOnline(true);
    runLoop.advance(1);
    EXPECT_EQ(sharedFolder.present(), setOf(6, "[2]"));
    EXPECT_EQ(one.store.data("commands"), "[2]");
}

TEST_F(SimulatedSharedFolderTest, aFullLocationIsToldAndTriedAgain) {
    Computer one(sharedFolder.join());
    runLoop.advance(1);
    one.store.setFull(true);
    one.change(5, "[1]");
    runLoop.advance(1);
    EXPECT_THAT(sharedFolder.present(), IsEmpty());
    EXPECT_THAT(one.told, testing::Contains(2));
    EXPECT_EQ(one.store.status().condition, Condition::notWritable);
    one.store.setFull(false);
    runLoop.advance(1);
    EXPECT_EQ(sharedFolder.present(), setOf(5, "[1]"));
}

TEST_F(SimulatedSharedFolderTest, aSetWithAValueOverAMebibyteIsRefused) {
    Computer one(sharedFolder.join());
    runLoop.advance(1);
    one.change(5, "[1]");
    runLoop.advance(1);
    one.change(6, Bytes(SharedStore::largestValue + 1, ' '));
    runLoop.advance(1);
    EXPECT_EQ(one.store.status().condition, Condition::tooLarge);
    EXPECT_THAT(one.told, ElementsAre(1, 2));
    EXPECT_EQ(one.store.data("commands"), "[1]");
    EXPECT_EQ(sharedFolder.present(), setOf(5, "[1]"));
    one.change(7, Bytes(SharedStore::largestValue, ' '));
    runLoop.advance(1);
    EXPECT_EQ(one.store.status().condition, Condition::current);
}

TEST_F(SimulatedSharedFolderTest, anotherLocationIsContactedAnew) {
    Computer one(sharedFolder.join());
    sharedFolder.put(setOf(5, "there"), "elsewhere");
    runLoop.advance(1);
    one.change(4, "here");
    one.store.setLocation("elsewhere");
    EXPECT_FALSE(one.store.hasBeenRead());
    EXPECT_FALSE(one.store.data("commands"));
    runLoop.advance(1);
    EXPECT_THAT(one.told, ElementsAre(1, 3, 1));
    EXPECT_EQ(one.store.data("commands"), "there");
    EXPECT_THAT(sharedFolder.present(), IsEmpty()) << "what was on its way there is forgotten";
    one.store.setLocation(std::nullopt);
    runLoop.advance(1);
    EXPECT_THAT(one.told, ElementsAre(1, 3, 1, 3));
    one.change(9, "nowhere");
    EXPECT_FALSE(one.store.data("commands"));
}

TEST_F(SimulatedSharedFolderTest, aDamagedLocationAnswersTheLastGoodSetAndTakesNothing) {
    Computer one(sharedFolder.join());
    sharedFolder.put(setOf(5, "good"));
    runLoop.advance(1);
    one.store.setDamaged(true);
    sharedFolder.put(setOf(6, "other"));
    one.change(7, "here");
    runLoop.advance(1);
    EXPECT_EQ(one.store.data("commands"), "here");
    EXPECT_EQ(sharedFolder.present(), setOf(6, "other"));
    EXPECT_EQ(one.store.status().condition, Condition::damaged);
    one.store.startAnew();
    runLoop.advance(1);
    EXPECT_EQ(sharedFolder.present(), setOf(7, "here"));
}

TEST_F(SimulatedSharedFolderTest, aProgramThatIsStartedAnewReadsAgain) {
    Computer one(sharedFolder.join());
    sharedFolder.put(setOf(5, "there"));
    runLoop.advance(1);
    one.store.restart();
    Computer again(one.store);
    EXPECT_FALSE(again.store.hasBeenRead());
    runLoop.advance(1);
    EXPECT_EQ(again.store.data("commands"), "there");
    EXPECT_THAT(again.told, IsEmpty()) << "the location was known";
    sharedFolder.put(setOf(6, "more"));
    runLoop.advance(1);
    EXPECT_THAT(again.told, ElementsAre(0));
}

}  // namespace
}  // namespace lumatile
