// What is kept among the copies because it does not count, and what must not stay in the folder.

#include <atomic>
#include <ctime>

#include "platform/freedesktop/sync_folder/ComputerMark.h"
#include "platform/freedesktop/sync_folder/SyncFolderCopies.h"
#include "tests/unit/platform/freedesktop/sync_folder/FolderStoreTest.h"

namespace lumatile {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

class FolderKeepTest : public FolderStoreTest {
protected:
    /// Every set is made on the one of that time; what says "?" cannot be used.
    void heed(double madeOn) {
        computer.store->heed({[](const SharedSet& set) {
                                  const auto commands = set.find("commands");
                                  return commands == set.end() || commands->second != "?";
                              },
                              [madeOn] { return madeOn; }});
    }

    fs::path kept(int milliseconds) const {
        return aside / ("lumatile-settings.from-" + std::to_string(milliseconds) + ".json");
    }
};

TEST_F(FolderKeepTest, whatAnotherComputerChangedMeanwhileIsKeptBeforeItIsReplaced) {
    computer.start(folder.path());
    heed(5);
    computer.change(5, "[common]");
    computer.settle();
    fs::rename(folder.path(), folder.path().native() + "-away");
    computer.settle();
    computer.change(8, "[here]");
    computer.settle();
    replaceFile(folder.path().native() + "-away/lumatile-settings.json", textOf(7, "[there]"));
    fs::rename(folder.path().native() + "-away", folder.path());
    EXPECT_TRUE(runUntil([&] { return readFile(file) == textOf(8, "[here]"); }));
    computer.settle();
    EXPECT_EQ(readFile(kept(7000)), textOf(7, "[there]"));
    const SharedStoreStatus status = computer.store->status();
    EXPECT_TRUE(status.hasKeptOthers);
    EXPECT_FALSE(status.hasKeptOwn);
    EXPECT_EQ(status.copiesLocation, aside.string());
    EXPECT_EQ(status.copiesPutAside, 0U);
    EXPECT_THAT(computer.log.lines(), testing::Contains(HasSubstr("was kept in")));

    // What was made on one's own last set replaces that alone.
    computer.change(9, "[here, too]");
    computer.settle();
    EXPECT_FALSE(fs::exists(kept(8000)));
}

TEST_F(FolderKeepTest, nothingIsReplacedThatCouldNotBeKept) {
    computer.start(folder.path());
    heed(1);
    folder.write(SyncFolderVisit::asideName, "no folder");
    replaceFile(file, textOf(7, "[there]"));
    computer.settle();
    computer.change(8, "[here]");
    computer.settle();
    EXPECT_EQ(readFile(file), textOf(7, "[there]"));
    EXPECT_EQ(computer.condition(), Condition::notWritable);
}

TEST_F(FolderKeepTest, aChangeOfThisComputerIsKeptOnDemand) {
    computer.start(folder.path());
    computer.change(5, "[main]");
    computer.settle();
    computer.store->keep(setOf(3, "[mine]"));
    EXPECT_EQ(computer.condition(), Condition::sending);
    EXPECT_TRUE(runUntil([&] { return computer.store->status().hasKeptOwn; }));
    computer.settle();
    EXPECT_EQ(readFile(kept(3000)), textOf(3, "[mine]"));
    EXPECT_EQ(readFile(file), textOf(5, "[main]"));
    EXPECT_EQ(computer.condition(), Condition::current);
}

TEST_F(FolderKeepTest, whatCannotBeUsedStaysUntilItIsReplacedAndIsKeptThen) {
    computer.start(folder.path());
    heed(5);
    computer.change(5, "[main]");
    computer.settle();
    computer.told.clear();
    replaceFile(file, textOf(7, "?"));
    computer.settle();
    EXPECT_EQ(computer.condition(), Condition::notUsable);
    EXPECT_EQ(computer.store->data("commands"), "[main]");
    EXPECT_THAT(computer.told, ElementsAre());
    EXPECT_FALSE(fs::exists(aside));
    computer.change(8, "[here]");
    computer.settle();
    EXPECT_EQ(readFile(file), textOf(8, "[here]"));
    EXPECT_EQ(readFile(kept(7000)), textOf(7, "?"));
    EXPECT_TRUE(computer.store->status().hasKeptUnusable);
    EXPECT_EQ(computer.condition(), Condition::current);
}

TEST_F(FolderKeepTest, aClockThatIsAheadIsToldOf) {
    computer.start(folder.path());
    EXPECT_EQ(computer.store->status().clockLead, std::nullopt);
    const auto now = static_cast<double>(time(nullptr));
    replaceFile(file, textOf(now + 600, "[ahead]"));
    computer.settle();
    EXPECT_NEAR(computer.store->status().clockLead.value_or(0), 600, 60);
}

TEST_F(FolderKeepTest, thisComputersTemporaryFilesAreRemovedAtTheStart) {
    const std::string own = ".lumatile-" + computerMark() + "-1";
    const std::string others = ".lumatile-0000000000000000-1";
    fs::create_directory(aside);
    for (const fs::path& place : {folder.path(), aside}) {
        std::ofstream(place / own) << "half";
        std::ofstream(place / others) << "half";
    }
    computer.start(folder.path());
    EXPECT_THAT(folder.names(), ElementsAre(others, SyncFolderVisit::asideName));
    EXPECT_FALSE(fs::exists(aside / own));
    EXPECT_TRUE(fs::exists(aside / others));
}

TEST_F(FolderKeepTest, theMarkIsTheSameAtEveryStart) {
    EXPECT_EQ(computerMark(), computerMark());
    EXPECT_EQ(computerMark().size(), 16U);
}

class FolderGarbageTest : public FolderStoreTest {
protected:
    FolderGarbageTest() {
        replaceFile(file, textOf(5, "[main]"));
        for (int number = 1000; number < 1000 + garbage; ++number) {
            folder.write("lumatile-settings (" + std::to_string(number) + ").json", "garbage");
        }
        replaceFile(last, textOf(7, "[newest]"));
    }

    static constexpr int garbage = 2 * static_cast<int>(SyncFolderCopies::mostLooked) + 10;
    fs::path last = folder / "lumatile-settings (conflicted copy).json";
};

TEST_F(FolderGarbageTest, oneVisitLooksAtAFewCopiesAndTheNextGoesOn) {
    SyncFolderVisit::Errand errand;
    errand.folder = folder.path();
    for (const int looked : {64, 128}) {
        const SyncFolderVisit visit(errand);
        EXPECT_EQ(visit.copiesAfter,
                  "lumatile-settings (" + std::to_string(1000 + looked - 1) + ").json");
        EXPECT_EQ(visit.text, textOf(5, "[main]"));
        errand.copiesAfter = visit.copiesAfter;
    }
    const SyncFolderVisit visit(errand);
    EXPECT_EQ(visit.copiesAfter, "");
    EXPECT_EQ(visit.text, textOf(7, "[newest]"));
    EXPECT_FALSE(fs::exists(last));
}

TEST_F(FolderGarbageTest, allAreLookedAtWithoutBeingAskedForAndThenItRests) {
    std::atomic<int> visits = 0;
    computer.pace.visit = [&visits](const auto& errand) {
        ++visits;
        return SyncFolderVisit(errand);
    };
    computer.start(folder.path());
    EXPECT_TRUE(runUntil([&] { return readFile(file) == textOf(7, "[newest]"); }));
    computer.settle();
    const int before = visits;
    computer.settle();
    EXPECT_EQ(visits, before);
    EXPECT_EQ(computer.store->data("commands"), "[newest]");
    EXPECT_EQ(folder.names().size(), garbage + 2U);
}

}  // namespace
}  // namespace lumatile
