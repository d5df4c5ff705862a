#include "platform/simulated/SimulatedPreferences.h"

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedLog.h"
#include "platform/simulated/SimulatedRunLoop.h"

namespace lumatile {
namespace {

TEST(SimulatedPreferences, valuesAreReadAsTheTypeTheyWereStoredAs) {
    SimulatedLog log;
    SimulatedClock clock;
    SimulatedRunLoop runLoop(clock);
    SimulatedPreferences preferences(log, runLoop);
    EXPECT_FALSE(preferences.bytes("commands"));
    preferences.setBytes("commands", Bytes("[\0]", 3));
    preferences.setBoolean("dragToSnapEnabled", false);
    EXPECT_EQ(preferences.bytes("commands"), Bytes("[\0]", 3));
    EXPECT_EQ(preferences.boolean("dragToSnapEnabled"), false);
    EXPECT_FALSE(preferences.boolean("commands"));
    EXPECT_FALSE(preferences.bytes("dragToSnapEnabled"));
    EXPECT_EQ(preferences.bytes("commands"), Bytes("[\0]", 3));
}

TEST(SimulatedPreferences, aValueOfNoUseReadsAsAbsentAndStaysStored) {
    SimulatedLog log;
    SimulatedClock clock;
    SimulatedRunLoop runLoop(clock);
    SimulatedPreferences preferences(log, runLoop);
    preferences.storeOnDisk("dragToSnapEnabled", std::int64_t{1});
    EXPECT_FALSE(preferences.boolean("dragToSnapEnabled"));
    preferences.setBytes("commands", "[]");
    preferences.restart();
    EXPECT_EQ(preferences.disk().at("dragToSnapEnabled"), StoredValue(std::int64_t{1}));
    EXPECT_EQ(preferences.changes("dragToSnapEnabled"), 0U);
}

TEST(SimulatedPreferences, onlyRealChangesAreCounted) {
    SimulatedLog log;
    SimulatedClock clock;
    SimulatedRunLoop runLoop(clock);
    SimulatedPreferences preferences(log, runLoop);
    preferences.setBytes("commands", "[]");
    preferences.setBytes("commands", "[]");
    preferences.setBytes("commands", "[1]");
    preferences.setBoolean("dragToSnapEnabled", true);
    EXPECT_EQ(preferences.changes("commands"), 2U);
    EXPECT_EQ(preferences.changes(), 3U);
    EXPECT_EQ(preferences.changes("oledSettings"), 0U);
}

TEST(SimulatedPreferences, aFullDiskKeepsTheNewValueInMemoryAndTheOldOneStored) {
    SimulatedLog log;
    SimulatedClock clock;
    SimulatedRunLoop runLoop(clock);
    SimulatedPreferences preferences(log, runLoop);
    preferences.setBytes("commands", "old");
    preferences.setDiskFull(true);
    preferences.setBytes("commands", "new");
    EXPECT_EQ(preferences.bytes("commands"), "new");
    EXPECT_EQ(preferences.disk().at("commands"), StoredValue(Bytes("old")));
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(log.lines()[0], "Preferences: could not be written, no space left on the disk");

    // The next change of anything brings everything to the disk.
    preferences.setDiskFull(false);
    preferences.setBoolean("dragToSnapEnabled", true);
    preferences.restart();
    EXPECT_EQ(preferences.bytes("commands"), "new");
    EXPECT_EQ(log.lines().size(), 1U);
}

TEST(SimulatedPreferences, whatIsRemovedIsGone) {
    SimulatedLog log;
    SimulatedClock clock;
    SimulatedRunLoop runLoop(clock);
    SimulatedPreferences preferences(log, runLoop);
    int told = 0;
    const auto watch = preferences.observe([&] { ++told; });
    preferences.setBytes("commands", "[]");
    runLoop.settle();
    preferences.remove("commands");
    preferences.remove("commands");
    runLoop.settle();
    EXPECT_EQ(told, 2);
    EXPECT_FALSE(preferences.bytes("commands"));
    EXPECT_TRUE(preferences.disk().empty());
    EXPECT_EQ(preferences.changes("commands"), 2U);

    // A full disk refuses that as well.
    preferences.setBytes("commands", "[]");
    preferences.setDiskFull(true);
    preferences.remove("commands");
    EXPECT_FALSE(preferences.bytes("commands"));
    preferences.restart();
    EXPECT_EQ(preferences.bytes("commands"), "[]");
}

TEST(SimulatedPreferences, settingTheSameValueAgainTriesTheDiskAgain) {
    SimulatedLog log;
    SimulatedClock clock;
    SimulatedRunLoop runLoop(clock);
    SimulatedPreferences preferences(log, runLoop);
    preferences.setDiskFull(true);
    preferences.setBytes("commands", "new");
    preferences.setDiskFull(false);
    preferences.setBytes("commands", "new");
    EXPECT_EQ(preferences.disk().at("commands"), StoredValue(Bytes("new")));
    EXPECT_EQ(preferences.changes("commands"), 1U);
}

TEST(SimulatedPreferences, whatNeverReachedTheDiskIsGoneAfterARestart) {
    SimulatedLog log;
    SimulatedClock clock;
    SimulatedRunLoop runLoop(clock);
    SimulatedPreferences preferences(log, runLoop);
    preferences.setBytes("commands", "old");
    preferences.setDiskFull(true);
    preferences.setBytes("commands", "new");
    preferences.restart();
    EXPECT_EQ(preferences.bytes("commands"), "old");
}

TEST(SimulatedPreferences, observersAreToldOfChangesFromTheRunLoop) {
    SimulatedLog log;
    SimulatedClock clock;
    SimulatedRunLoop runLoop(clock);
    SimulatedPreferences preferences(log, runLoop);
    int told = 0;
    auto watch = preferences.observe([&] { ++told; });
    preferences.storeOnDisk("a", true);
    EXPECT_EQ(told, 0);
    runLoop.settle();
    EXPECT_EQ(told, 1);
    preferences.setBoolean("a", false);
    runLoop.settle();
    EXPECT_EQ(told, 2);
    preferences.setBoolean("a", false);
    runLoop.settle();
    EXPECT_EQ(told, 2) << "nothing has changed";
    preferences.setBoolean("a", true);
    watch.reset();
    runLoop.settle();
    EXPECT_EQ(told, 2) << "nobody is told any more";
}

}  // namespace
}  // namespace lumatile
