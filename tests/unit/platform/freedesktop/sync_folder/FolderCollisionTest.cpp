#include <algorithm>
#include <map>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/unit/platform/freedesktop/sync_folder/FolderStoreTest.h"

namespace lumatile {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class FolderCollisionTest : public FolderStoreTest {
protected:
    /// Every text in the folder and in that of the copies.
    std::vector<std::string> texts() const {
        std::vector<std::string> texts;
        for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
            if (entry.is_regular_file()) {
                texts.push_back(readFile(entry.path()));
            }
        }
        return texts;
    }

    std::vector<std::string> asideNames() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(aside)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    fs::path copy = folder / "lumatile-settings.sync-conflict-20261121-170512-ABCDEFG.json";
};

TEST_F(FolderCollisionTest, aNewerCopyBecomesTheFileAndNothingIsLost) {
    computer.start(folder.path());
    computer.change(5, "[main]");
    computer.settle();
    computer.told.clear();
    replaceFile(copy, textOf(7, "[copy]"));
    computer.settle();
    EXPECT_THAT(computer.told, ElementsAre(0));
    EXPECT_EQ(computer.store->data("commands"), "[copy]");
    EXPECT_EQ(readFile(file), textOf(7, "[copy]"));
    EXPECT_THAT(folder.names(), ElementsAre(SyncFolderVisit::asideName, SyncFolderVisit::fileName));
    EXPECT_THAT(asideNames(),
                ElementsAre("lumatile-settings.from-5000.json", copy.filename().string()));
    EXPECT_EQ(readFile(aside / "lumatile-settings.from-5000.json"), textOf(5, "[main]"));
    EXPECT_EQ(computer.store->status().copiesPutAside, 2U);
    EXPECT_THAT(computer.log.lines(), ElementsAre(HasSubstr("put into")));
}

TEST_F(FolderCollisionTest, aCollisionIsSettledWhenTheFileHasRested) {
    constexpr int anHour = 3'600'000;
    computer.pace.restMilliseconds = anHour;
    computer.start(folder.path());
    // First the copy, then the other file in the place that has become free.
    replaceFile(copy, textOf(7, "[copy]"));
    replaceFile(file, textOf(5, "[main]"));
    computer.settle();
    EXPECT_THAT(folder.names(), ElementsAre(SyncFolderVisit::fileName, copy.filename().string()));
    EXPECT_EQ(readFile(file), textOf(5, "[main]"));
    // What was kept back is done by the next one that may, also after a new start.
    computer.pace.restMilliseconds = 0;
    computer.start();
    computer.settle();
    EXPECT_EQ(readFile(file), textOf(7, "[copy]"));
    EXPECT_EQ(computer.store->status().copiesPutAside, 2U);
}

TEST_F(FolderCollisionTest, anOlderCopyIsPutAsideAndChangesNothing) {
    for (const double time : {3.0, 5.0}) {
        computer.start(folder.path());
        computer.change(5, "[main]");
        computer.settle();
        computer.told.clear();
        replaceFile(copy, textOf(time, "[copy]"));
        computer.settle();
        EXPECT_THAT(computer.told, IsEmpty());
        EXPECT_EQ(readFile(file), textOf(5, "[main]"));
        EXPECT_EQ(computer.store->data("commands"), "[main]");
        EXPECT_FALSE(fs::exists(copy));
        fs::remove_all(aside);
        fs::remove(file);
        computer.store->setLocation(std::nullopt);
        computer.settle();
    }
}

TEST_F(FolderCollisionTest, aCopyThatWasPutAsideDoesNotComeBack) {
    computer.start(folder.path());
    computer.change(5, "[main]");
    computer.settle();
    // From a computer whose clock is ahead.
    replaceFile(copy, textOf(1000, "[copy]"));
    computer.settle();
    computer.change(6, "[later]");
    computer.settle();
    computer.start();
    computer.settle();
    EXPECT_EQ(readFile(file), textOf(6, "[later]"));
    EXPECT_EQ(computer.store->data("commands"), "[later]");
}

TEST_F(FolderCollisionTest, twoCopiesOfOneNameAreBothKept) {
    computer.start(folder.path());
    computer.change(5, "[main]");
    computer.settle();
    for (const char* commands : {"[one]", "[two]", "[one]"}) {
        replaceFile(copy, textOf(3, commands));
        computer.settle();
    }
    EXPECT_THAT(asideNames(),
                ElementsAre("lumatile-settings.sync-conflict-20261121-170512-ABCDEFG-2.json",
                            copy.filename().string()));
}

TEST_F(FolderCollisionTest, aCopyThatIsStillArrivingIsLeftUntilItIsWhole) {
    computer.start(folder.path());
    computer.change(5, "[main]");
    computer.settle();
    const std::string text = textOf(7, "[copy]");
    replaceFile(copy, text.substr(0, 50));
    computer.settle();
    EXPECT_EQ(readFile(copy), text.substr(0, 50));
    EXPECT_EQ(readFile(file), textOf(5, "[main]"));
    replaceFile(copy, text);
    computer.settle();
    EXPECT_EQ(readFile(file), text);
}

TEST_F(FolderCollisionTest, aNewerCopyTakesTheDamagedFilesPlace) {
    computer.start(folder.path());
    computer.change(5, "[main]");
    computer.settle();
    replaceFile(file, "damaged");
    replaceFile(copy, textOf(4, "[older]"));
    computer.settle();
    EXPECT_EQ(readFile(file), "damaged");
    EXPECT_EQ(computer.store->data("commands"), "[main]");
    replaceFile(copy, textOf(7, "[newer]"));
    computer.settle();
    EXPECT_EQ(readFile(file), textOf(7, "[newer]"));
    EXPECT_EQ(computer.store->data("commands"), "[newer]");
    EXPECT_EQ(readFile(aside / "lumatile-settings.damaged.json"), "damaged");
}

TEST_F(FolderCollisionTest, aCopyAloneIsTheSettings) {
    replaceFile(copy, textOf(7, "[copy]"));
    computer.start(folder.path());
    EXPECT_EQ(computer.store->data("commands"), "[copy]");
    EXPECT_EQ(readFile(file), textOf(7, "[copy]"));
}

// A service moves one file away before it puts the other in its place.
TEST_F(FolderCollisionTest, aCopyThatAppearsBeforeTheFileItMadeRoomForWaitsForIt) {
    computer.start(folder.path());
    computer.change(7, "[here]");
    computer.settle();
    fs::rename(file, copy);
    computer.settle();
    EXPECT_EQ(computer.condition(), Condition::missing);
    EXPECT_THAT(folder.names(), ElementsAre(copy.filename().string()));
    replaceFile(file, textOf(5, "[there]"));
    computer.settle();
    EXPECT_EQ(readFile(file), textOf(7, "[here]"));
    EXPECT_THAT(asideNames(),
                ElementsAre("lumatile-settings.from-5000.json", copy.filename().string()));
    EXPECT_EQ(computer.condition(), Condition::current);
}

TEST_F(FolderCollisionTest, copiesInAFolderThatMayNotBeWrittenAreLeftThere) {
    replaceFile(file, textOf(5, "[main]"));
    replaceFile(copy, textOf(7, "[copy]"));
    fs::permissions(file, fs::perms(0644));
    fs::permissions(copy, fs::perms(0644));
    fs::permissions(folder.path(), fs::perms(0555));
    const NobodysRights rights;
    computer.start(folder.path());
    EXPECT_EQ(computer.store->data("commands"), "[main]");
    EXPECT_EQ(readFile(file), textOf(5, "[main]"));
    EXPECT_TRUE(fs::exists(copy));
}

RC_GTEST_FIXTURE_PROP(FolderCollisionTest, theNewestCountsAndNothingIsLost, ()) {
    std::map<double, std::string> newest;
    std::vector<std::string> written;
    const auto count = *rc::gen::inRange(1, 6);
    for (int index = 0; index < count; ++index) {
        const auto time = static_cast<double>(*rc::gen::inRange(1, 6));
        const std::string text = textOf(time, "[" + std::to_string(index) + "]");
        // The first is the file itself, which counts among those of its time.
        const fs::path path =
            index == 0 ? file : folder / ("lumatile-settings (" + std::to_string(index) + ").json");
        replaceFile(path, text);
        newest.try_emplace(time, text);
        written.push_back(text);
    }
    computer.start(folder.path());
    RC_ASSERT(readFile(file) == newest.rbegin()->second);
    const std::vector<std::string> kept = texts();
    for (const std::string& text : written) {
        RC_ASSERT(std::find(kept.begin(), kept.end(), text) != kept.end());
    }
    RC_ASSERT(folder.names().size() == (count > 1 ? 2U : 1U));
    RC_ASSERT(computer.store->data("__ts") ==
              std::optional(SyncTimestamp::encode(newest.rbegin()->first)));
}

}  // namespace
}  // namespace lumatile
