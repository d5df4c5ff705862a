#include <atomic>
#include <future>

#include <gtest/gtest.h>

#include "tests/unit/platform/freedesktop/sync_folder/FolderStoreTest.h"

// When the folder is visited, and folders that do not answer.

namespace lumatile {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr int anHour = 3'600'000;

TEST_F(SharedFolderStoreTest, nothingIsWrittenOverAFileThatAnotherHasJustPutThere) {
    computer.pace.restMilliseconds = anHour;
    computer.start(folder.path());
    computer.change(5, "[mine]");
    computer.settle();
    computer.change(6, "[mine, too]");
    computer.settle();
    EXPECT_EQ(readFile(file), textOf(6, "[mine, too]")) << "over its own it writes at once";
    replaceFile(file, textOf(7, "[there]"));
    computer.settle();
    EXPECT_EQ(computer.store->data("commands"), "[there]");
    EXPECT_EQ(computer.condition(), Condition::current);
    computer.change(8, "[here]");
    computer.settle();
    EXPECT_EQ(readFile(file), textOf(7, "[there]"));
    EXPECT_EQ(computer.condition(), Condition::sending);
    EXPECT_EQ(computer.store->data("commands"), "[here]");
}

TEST_F(SharedFolderStoreTest, whatHadToRestIsWrittenAfterwardsWithoutBeingAskedFor) {
    std::atomic<int> visits = 0;
    computer.pace.restMilliseconds = 200;
    computer.pace.visit = [&](const auto& errand) {
        ++visits;
        return SyncFolderVisit(errand);
    };
    computer.start(folder.path());
    replaceFile(file, textOf(7, "[there]"));
    computer.settle();
    visits = 0;
    computer.change(8, "[here]");
    EXPECT_TRUE(runUntil([&] { return readFile(file) == textOf(8, "[here]"); }));
    computer.settle();
    EXPECT_EQ(computer.condition(), Condition::current);
    // Too soon, to write, and one for the events of that; the second may be too soon by the
    // little that the two clocks differ.
    EXPECT_LE(visits, 4);
}

/// A visitor that is held up as by a mount that does not answer.
struct HeldVisits {
    std::promise<void> release;
    std::shared_future<void> released = release.get_future().share();

    SyncFolderVisit operator()(const SyncFolderVisit::Errand& errand) const {
        if (errand.folder.filename() == "dead") {
            released.wait();
        }
        return SyncFolderVisit(errand);
    }
};

TEST_F(SharedFolderStoreTest, aMountThatDoesNotAnswerHoldsNothingUp) {
    const fs::path dead = folder / "dead";
    const fs::path alive = folder / "alive";
    fs::create_directory(dead);
    fs::create_directory(alive);
    replaceFile(dead / SyncFolderVisit::fileName, textOf(3, "[dead]"));
    HeldVisits held;
    computer.pace.visit = [&held](const auto& errand) { return held(errand); };
    computer.pace.patienceMilliseconds = 1;
    computer.start();
    computer.store->setLocation(dead.string());
    EXPECT_TRUE(runUntil([&] { return computer.store->status().failure == "no answer"; }));
    EXPECT_EQ(computer.condition(), Condition::notReachable);
    EXPECT_TRUE(computer.store->isVisiting());
    EXPECT_THAT(computer.log.lines(), ElementsAre(HasSubstr("does not answer")));

    computer.store->setLocation(alive.string());
    EXPECT_TRUE(runUntil([&] { return computer.store->hasBeenRead(); }));
    computer.change(5, "[1]");
    EXPECT_TRUE(runUntil([&] { return computer.condition() == Condition::current; }));
    EXPECT_EQ(readFile(alive / SyncFolderVisit::fileName), textOf(5, "[1]"));

    // The late answer is about a folder that nobody asks for any more.
    held.release.set_value();
    computer.settle();
    EXPECT_EQ(computer.store->data("commands"), "[1]");
    computer.store->setLocation(dead.string());
    EXPECT_TRUE(runUntil([&] { return computer.store->hasBeenRead(); }));
    EXPECT_EQ(computer.store->data("commands"), "[dead]");
}

TEST_F(SharedFolderStoreTest, mayEndDuringAVisit) {
    const fs::path dead = folder / "dead";
    fs::create_directory(dead);
    HeldVisits held;
    std::promise<void> ended;
    computer.pace.visit = [&](const auto& errand) {
        SyncFolderVisit visit = held(errand);
        ended.set_value();
        return visit;
    };
    computer.start();
    computer.store->setLocation(dead.string());
    computer.watch.reset();
    computer.store.reset();
    held.release.set_value();
    ended.get_future().wait();
    while (g_main_context_iteration(nullptr, FALSE) != 0) {
    }
}

TEST_F(SharedFolderStoreTest, looksNowAndThenWhereTheKernelDoesNotTell) {
    std::atomic<int> visits = 0;
    computer.pace.visit = [&](const auto& errand) {
        ++visits;
        return SyncFolderVisit(errand);
    };
    computer.start(folder.path());
    const int usual = visits;
    EXPECT_LE(usual, 2);
    computer.store->setLocation(std::nullopt);
    computer.settle();
    computer.pace.pollMilliseconds = 1;
    computer.pace.alwaysPolls = true;
    computer.start();
    computer.store->setLocation(folder.path().string());
    EXPECT_TRUE(runUntil([&] { return visits > usual + 5; }));
    computer.store->setLocation(std::nullopt);
    computer.settle();
    const int before = visits;
    while (g_main_context_iteration(nullptr, FALSE) != 0) {
    }
    EXPECT_EQ(visits, before);
}

TEST_F(SharedFolderStoreTest, aFolderAtRestIsNotVisited) {
    std::atomic<int> visits = 0;
    computer.pace.visit = [&](const auto& errand) {
        ++visits;
        return SyncFolderVisit(errand);
    };
    computer.start(folder.path());
    computer.change(5, "[1]");
    computer.settle();
    // One to write, and one for the events of that.
    EXPECT_LE(visits, 4);
    const int before = visits;
    folder.write("something else", "x");
    fs::create_directory(folder / "a folder");
    computer.settle();
    EXPECT_EQ(visits, before);
}

}  // namespace
}  // namespace lumatile
