#include "platform/freedesktop/sync_folder/SharedFolderStore.h"

#include <atomic>
#include <future>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/unit/base/FileSizeLimit.h"
#include "tests/unit/platform/freedesktop/sync_folder/FolderStoreTest.h"

namespace lumatile {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

using FolderCloudStoreTest = FolderStoreTest;

TEST_F(FolderCloudStoreTest, withoutAFolderThereIsNothing) {
    computer.start();
    computer.change(1, "[1]");
    computer.settle();
    EXPECT_FALSE(computer.store->hasBeenRead());
    EXPECT_FALSE(computer.store->data("commands"));
    EXPECT_EQ(computer.condition(), Condition::noLocation);
    EXPECT_THAT(computer.told, IsEmpty());
}

TEST_F(FolderCloudStoreTest, anEmptyFolderIsAFirstContact) {
    computer.start(folder.path());
    EXPECT_THAT(computer.told, ElementsAre(3, 1));
    EXPECT_TRUE(computer.store->hasBeenRead());
    EXPECT_FALSE(computer.store->data("commands"));
    EXPECT_EQ(computer.condition(), Condition::current);
    EXPECT_EQ(computer.store->status().location, folder.path().string());
    EXPECT_THAT(folder.names(), IsEmpty()) << "nothing is written before there is something";
}

TEST_F(FolderCloudStoreTest, whatIsSetBecomesTheFileAndIsNoChangeFromOutside) {
    computer.start(folder.path());
    computer.change(5, "[1]");
    EXPECT_EQ(computer.store->data("commands"), "[1]");
    EXPECT_EQ(computer.condition(), Condition::sending);
    computer.settle();
    EXPECT_EQ(contents(file), textOf(5, "[1]"));
    EXPECT_THAT(folder.names(), ElementsAre(SyncFolderVisit::fileName));
    EXPECT_THAT(computer.told, ElementsAre(3, 1));
    EXPECT_EQ(computer.condition(), Condition::current);
    EXPECT_TRUE(computer.store->status().lastSynced);
    struct stat status {};
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST_F(FolderCloudStoreTest, whatIsSetIsWrittenWithoutBeingAskedFor) {
    computer.start(folder.path());
    computer.store->set("[1]", "commands");
    computer.store->set(SyncTimestamp::encode(5), "__ts");
    computer.settle();
    EXPECT_EQ(contents(file), textOf(5, "[1]"));
}

TEST_F(FolderCloudStoreTest, aKnownFolderIsReadWithoutAReason) {
    computer.start(folder.path());
    computer.change(5, "[1]");
    computer.settle();
    computer.start();
    EXPECT_FALSE(computer.store->hasBeenRead());
    EXPECT_EQ(computer.condition(), Condition::notReachable);
    computer.settle();
    EXPECT_TRUE(computer.store->hasBeenRead());
    EXPECT_EQ(computer.store->data("commands"), "[1]");
    EXPECT_THAT(computer.told, IsEmpty());
}

TEST_F(FolderCloudStoreTest, aFileThatIsReplacedIsAChangeByAnother) {
    computer.start(folder.path());
    replaceFile(file, textOf(7, "[there]"));
    computer.settle();
    EXPECT_THAT(computer.told, ElementsAre(3, 1, 0));
    EXPECT_EQ(computer.store->data("commands"), "[there]");
    replaceFile(file, textOf(7, "[there]"));
    computer.settle();
    EXPECT_THAT(computer.told, ElementsAre(3, 1, 0)) << "the same again is no change";
    replaceFile(file, textOf(6, "[older]"));
    computer.settle();
    EXPECT_THAT(computer.told, ElementsAre(3, 1, 0, 0));
    EXPECT_EQ(computer.store->data("commands"), "[older]");
}

constexpr int anHour = 3'600'000;

TEST_F(FolderCloudStoreTest, nothingIsWrittenOverAFileThatAnotherHasJustPutThere) {
    computer.pace.restMilliseconds = anHour;
    computer.start(folder.path());
    computer.change(5, "[mine]");
    computer.settle();
    computer.change(6, "[mine, too]");
    computer.settle();
    EXPECT_EQ(contents(file), textOf(6, "[mine, too]")) << "over its own it writes at once";
    replaceFile(file, textOf(7, "[there]"));
    computer.settle();
    EXPECT_EQ(computer.store->data("commands"), "[there]");
    EXPECT_EQ(computer.condition(), Condition::current);
    computer.change(8, "[here]");
    computer.settle();
    EXPECT_EQ(contents(file), textOf(7, "[there]"));
    EXPECT_EQ(computer.condition(), Condition::sending);
    EXPECT_EQ(computer.store->data("commands"), "[here]");
}

TEST_F(FolderCloudStoreTest, whatHadToRestIsWrittenAfterwardsWithoutBeingAskedFor) {
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
    EXPECT_TRUE(runUntil([&] { return contents(file) == textOf(8, "[here]"); }));
    computer.settle();
    EXPECT_EQ(computer.condition(), Condition::current);
    // Too soon, to write, and one for the events of that; the second may be too soon by the
    // little that the two clocks differ.
    EXPECT_LE(visits, 4);
}

TEST_F(FolderCloudStoreTest, aFileThatIsWrittenInPlaceIsReadWhenItIsWhole) {
    computer.start(folder.path());
    const std::string text = textOf(7, "[there]");
    std::ofstream arriving(file, std::ios::binary);
    arriving << text.substr(0, 40) << std::flush;
    computer.settle();
    EXPECT_THAT(computer.told, ElementsAre(3, 1));
    EXPECT_THAT(computer.log.lines(), IsEmpty());
    arriving << text.substr(40);
    arriving.close();
    computer.settle();
    EXPECT_THAT(computer.told, ElementsAre(3, 1, 0));
    EXPECT_EQ(computer.store->data("commands"), "[there]");
}

TEST_F(FolderCloudStoreTest, aFolderThatIsMadeLaterIsFound) {
    const fs::path later = folder / "mirrored" / "settings";
    computer.start(later);
    EXPECT_FALSE(computer.store->hasBeenRead());
    EXPECT_EQ(computer.condition(), Condition::notReachable);
    EXPECT_NE(computer.store->status().failure, "");
    EXPECT_THAT(computer.log.lines(), SizeIs(1));
    computer.change(5, "[1]");
    computer.settle();
    fs::create_directory(later.parent_path());
    computer.settle();
    EXPECT_FALSE(computer.store->hasBeenRead());
    fs::create_directory(later);
    computer.settle();
    EXPECT_TRUE(computer.store->hasBeenRead());
    EXPECT_EQ(contents(later / SyncFolderVisit::fileName), textOf(5, "[1]"));
    EXPECT_THAT(computer.log.lines(), SizeIs(1));
}

TEST_F(FolderCloudStoreTest, ofAChangeBeforeTheFirstReadingAndWhatLiesThereTheLaterCounts) {
    for (const double there : {4.0, 6.0}) {
        const fs::path later = folder / ("at" + std::to_string(static_cast<int>(there)));
        const fs::path arriving = folder / "arriving";
        fs::create_directory(arriving);
        replaceFile(arriving / SyncFolderVisit::fileName, textOf(there, "[there]"));
        computer.start(later);
        computer.change(5, "[here]");
        computer.settle();
        fs::rename(arriving, later);
        computer.settle();
        const bool isLater = there > 5;
        EXPECT_EQ(contents(later / SyncFolderVisit::fileName),
                  isLater ? textOf(there, "[there]") : textOf(5, "[here]"));
        EXPECT_EQ(computer.store->data("commands"), isLater ? "[there]" : "[here]");
        computer.store->setLocation(std::nullopt);
        computer.settle();
    }
}

TEST_F(FolderCloudStoreTest, aFolderThatGoesAndComesIsAnsweredFromMemoryMeanwhile) {
    const fs::path shared = folder / "shared";
    fs::create_directory(shared);
    computer.start(shared);
    computer.change(5, "[1]");
    computer.settle();
    fs::rename(shared, folder / "gone");
    computer.settle();
    EXPECT_EQ(computer.condition(), Condition::notReachable);
    EXPECT_EQ(computer.store->data("commands"), "[1]");
    computer.change(6, "[2]");
    computer.settle();
    EXPECT_FALSE(fs::exists(shared)) << "nobody makes the folder anew";
    fs::rename(folder / "gone", shared);
    computer.settle();
    EXPECT_EQ(contents(shared / SyncFolderVisit::fileName), textOf(6, "[2]"));
    EXPECT_EQ(computer.condition(), Condition::current);
}

// As where a mount point lies empty because nothing is mounted.
TEST_F(FolderCloudStoreTest, aKnownFolderWithoutItsFileIsNotBegunAnew) {
    computer.pace.absenceMilliseconds = 1;
    computer.start(folder.path());
    computer.change(5, "[1]");
    computer.settle();
    fs::remove(file);
    computer.settle();
    EXPECT_EQ(computer.condition(), Condition::missing);
    EXPECT_EQ(computer.store->data("commands"), "[1]");
    EXPECT_TRUE(runUntil([&] { return computer.log.lines().size() == 1; }));
    computer.start();
    computer.settle();
    EXPECT_FALSE(computer.store->hasBeenRead());
    computer.change(6, "[2]");
    EXPECT_TRUE(runUntil([&] { return computer.log.lines().size() == 2; }));
    computer.settle();
    EXPECT_THAT(folder.names(), IsEmpty());
    EXPECT_THAT(computer.log.lines(), SizeIs(2)) << "one line for each start";

    // It is mounted again.
    replaceFile(file, textOf(5, "[1]"));
    computer.settle();
    EXPECT_EQ(contents(file), textOf(6, "[2]"));
    EXPECT_EQ(computer.condition(), Condition::current);
}

TEST_F(FolderCloudStoreTest, aFileThatIsGoneForAMomentIsNotSpokenOf) {
    computer.start(folder.path());
    computer.change(5, "[1]");
    computer.settle();
    for (const double time : {6.0, 7.0, 8.0}) {
        fs::remove(file);
        computer.settle();
        replaceFile(file, textOf(time, "[there]"));
        computer.settle();
        EXPECT_EQ(computer.condition(), Condition::current);
    }
    EXPECT_THAT(computer.log.lines(), IsEmpty());
}

TEST_F(FolderCloudStoreTest, theUserMayHaveAMissingFileWrittenAnew) {
    computer.start(folder.path());
    computer.change(5, "[1]");
    computer.settle();
    fs::remove(file);
    computer.settle();
    computer.told.clear();
    computer.store->startAnew();
    computer.settle();
    EXPECT_THAT(computer.told, ElementsAre(1));
    EXPECT_FALSE(computer.store->data("commands")) << "it counts as empty";
    computer.change(6, "[2]");
    computer.settle();
    EXPECT_EQ(contents(file), textOf(6, "[2]"));
}

TEST_F(FolderCloudStoreTest, aFileCutOffAnywhereIsRefusedAndLeftAlone) {
    computer.start(folder.path());
    computer.change(5, "[1]");
    computer.settle();
    const std::string text = textOf(7, "[there]");
    for (std::size_t length = 0; length < text.size(); ++length) {
        const std::string cut = text.substr(0, length);
        replaceFile(file, cut);
        computer.settle();
        ASSERT_EQ(computer.condition(), Condition::damaged) << length;
        ASSERT_EQ(computer.store->data("commands"), "[1]") << length;
        ASSERT_EQ(contents(file), cut) << length;
    }
    EXPECT_THAT(computer.told, ElementsAre(3, 1));
    EXPECT_THAT(computer.log.lines(), ElementsAre(HasSubstr("damaged")));
    computer.change(6, "[2]");
    computer.settle();
    EXPECT_EQ(contents(file), text.substr(0, text.size() - 1));
    EXPECT_EQ(computer.store->data("commands"), "[2]");

    // The rest arrives.
    replaceFile(file, text);
    computer.settle();
    EXPECT_THAT(computer.told, ElementsAre(3, 1, 0));
    EXPECT_EQ(computer.store->data("commands"), "[there]");
    EXPECT_EQ(computer.condition(), Condition::current);

    replaceFile(file, text + text);
    computer.settle();
    EXPECT_THAT(computer.log.lines(), SizeIs(2)) << "damaged once more";
}

RC_GTEST_FIXTURE_PROP(FolderCloudStoreTest, aFileOfWhichABitIsWrongIsRefused, ()) {
    computer.start(folder.path());
    std::string text = textOf(7, *rc::gen::arbitrary<std::string>());
    const auto bit = *rc::gen::inRange<std::size_t>(0, text.size() * 8);
    text[bit / 8] = static_cast<char>(text[bit / 8] ^ (1 << bit % 8));
    replaceFile(file, text);
    computer.settle();
    RC_ASSERT(computer.condition() == Condition::damaged);
    RC_ASSERT(computer.told == (std::vector{3, 1}));
    computer.change(9, "[1]");
    computer.settle();
    RC_ASSERT(contents(file) == text);
}

TEST_F(FolderCloudStoreTest, whatIsNoFileOrTooLargeIsRefused) {
    computer.start(folder.path());
    std::ofstream(file).close();
    fs::resize_file(file, SharedSetCodec::largestText + 1);
    computer.settle();
    EXPECT_EQ(computer.condition(), Condition::damaged);
    fs::remove(file);
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    replaceFile(folder / "lumatile-settings (1).json", "");  // Makes it look.
    computer.settle();
    EXPECT_EQ(computer.condition(), Condition::damaged);
    fs::remove(file);
    fs::create_directory(file);
    replaceFile(folder / "lumatile-settings (1).json", "");
    computer.settle();
    EXPECT_EQ(computer.condition(), Condition::damaged);
    EXPECT_THAT(computer.told, ElementsAre(3, 1));
}

TEST_F(FolderCloudStoreTest, theUserMayHaveADamagedFileReplacedAndKeepsIt) {
    replaceFile(file, "damaged");
    computer.start(folder.path());
    EXPECT_FALSE(computer.store->hasBeenRead());
    EXPECT_THAT(computer.told, ElementsAre(3));
    computer.store->startAnew();
    computer.settle();
    EXPECT_THAT(computer.told, ElementsAre(3, 1));
    EXPECT_EQ(contents(file), "damaged") << "until there is something to write";
    computer.change(5, "[1]");
    computer.settle();
    EXPECT_EQ(contents(file), textOf(5, "[1]"));
    EXPECT_EQ(contents(aside / "lumatile-settings.damaged.json"), "damaged");
    EXPECT_EQ(computer.store->status().copiesPutAside, 1U);
    EXPECT_EQ(computer.condition(), Condition::current);
}

TEST_F(FolderCloudStoreTest, aGoodFileThatArrivesMeanwhileIsNotReplacedUnread) {
    replaceFile(file, "damaged");
    computer.start(folder.path());
    replaceFile(file, textOf(9, "[there]"));
    computer.store->startAnew();
    computer.change(5, "[1]");
    computer.settle();
    EXPECT_EQ(contents(file), textOf(9, "[there]"));
    EXPECT_EQ(computer.store->data("commands"), "[there]");
}

TEST_F(FolderCloudStoreTest, aFullDiskIsToldOnceAndTriedAgain) {
    computer.pace.pollMilliseconds = 1;
    computer.start(folder.path());
    computer.change(5, "[1]");
    computer.settle();
    {
        const FileSizeLimit full(20);
        computer.change(6, "[2]");
        EXPECT_TRUE(runUntil([&] { return computer.condition() == Condition::notWritable; }));
        computer.settle();
        EXPECT_THAT(computer.told, ElementsAre(3, 1, 2));
        EXPECT_NE(computer.store->status().failure, "");
        EXPECT_EQ(computer.store->data("commands"), "[2]");
        EXPECT_EQ(contents(file), textOf(5, "[1]"));
        EXPECT_THAT(folder.names(), ElementsAre(SyncFolderVisit::fileName));
    }
    EXPECT_TRUE(runUntil([&] { return computer.condition() == Condition::current; }));
    EXPECT_EQ(contents(file), textOf(6, "[2]"));
    EXPECT_THAT(computer.told, ElementsAre(3, 1, 2));
    EXPECT_THAT(computer.log.lines(), ElementsAre(HasSubstr("cannot be written")));
}

TEST_F(FolderCloudStoreTest, aFolderThatOnlyOthersMayWriteIsRead) {
    fs::permissions(folder.path(), fs::perms(0555));
    replaceFile(file, textOf(5, "[there]"));
    fs::permissions(file, fs::perms(0444));
    {
        const NobodysRights rights;
        computer.start(folder.path());
        EXPECT_EQ(computer.store->data("commands"), "[there]");
        EXPECT_EQ(computer.condition(), Condition::current);
        computer.change(6, "[here]");
        computer.settle();
        EXPECT_EQ(computer.condition(), Condition::notWritable);
        EXPECT_THAT(computer.told, ElementsAre(3, 1, 2));
        EXPECT_EQ(contents(file), textOf(5, "[there]"));
    }
    // What becomes allowed is seen without being told.
    fs::permissions(folder.path(), fs::perms(0755));
    computer.settle();
    EXPECT_EQ(contents(file), textOf(6, "[here]"));
}

TEST_F(FolderCloudStoreTest, aValueOverAMebibyteIsRefused) {
    computer.start(folder.path());
    computer.change(5, "[1]");
    computer.settle();
    computer.change(6, Bytes(SharedStore::largestValue + 1, ' '));
    computer.settle();
    EXPECT_THAT(computer.told, ElementsAre(3, 1, 2));
    EXPECT_EQ(computer.condition(), Condition::tooLarge);
    EXPECT_EQ(computer.store->data("commands"), "[1]");
    EXPECT_EQ(contents(file), textOf(5, "[1]"));
    computer.change(7, "[2]");
    computer.settle();
    EXPECT_EQ(computer.condition(), Condition::current);
    EXPECT_EQ(contents(file), textOf(7, "[2]"));
}

TEST_F(FolderCloudStoreTest, anotherFolderIsReadAnewAndTheFormerIsLeft) {
    const fs::path one = folder / "one";
    const fs::path two = folder / "two";
    fs::create_directory(one);
    fs::create_directory(two);
    replaceFile(two / SyncFolderVisit::fileName, textOf(3, "[two]"));
    computer.start(one);
    computer.change(5, "[1]");
    computer.settle();
    computer.told.clear();
    computer.change(6, "[on its way]");
    computer.store->setLocation(two.string());
    EXPECT_FALSE(computer.store->hasBeenRead());
    EXPECT_FALSE(computer.store->data("commands"));
    computer.settle();
    EXPECT_THAT(computer.told, ElementsAre(3, 1));
    EXPECT_EQ(computer.store->data("commands"), "[two]");
    EXPECT_EQ(contents(two / SyncFolderVisit::fileName), textOf(3, "[two]"));
    EXPECT_EQ(computer.preferences.bytes("syncFolder"), two.string());
    computer.store->setLocation(std::nullopt);
    computer.settle();
    EXPECT_THAT(computer.told, ElementsAre(3, 1, 3));
    EXPECT_FALSE(computer.preferences.bytes("syncFolder"));
    EXPECT_TRUE(fs::exists(one / SyncFolderVisit::fileName));
    replaceFile(two / SyncFolderVisit::fileName, textOf(9, "[two]"));
    computer.settle();
    EXPECT_THAT(computer.told, ElementsAre(3, 1, 3));
    EXPECT_EQ(computer.condition(), Condition::noLocation);
}

TEST_F(FolderCloudStoreTest, whatIsNoPathIsNotReachable) {
    for (const std::string& path : {std::string("relative"), std::string(),
                                    std::string(5000, '/') + "x", "/" + std::string(300, 'n'),
                                    std::string("/tmp\0x", 6), file.string() + "/below/a/file"}) {
        computer.start(path);
        EXPECT_EQ(computer.condition(), Condition::notReachable) << path;
        EXPECT_FALSE(computer.store->hasBeenRead()) << path;
    }
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

TEST_F(FolderCloudStoreTest, aMountThatDoesNotAnswerHoldsNothingUp) {
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
    EXPECT_EQ(contents(alive / SyncFolderVisit::fileName), textOf(5, "[1]"));

    // The late answer is about a folder that nobody asks for any more.
    held.release.set_value();
    computer.settle();
    EXPECT_EQ(computer.store->data("commands"), "[1]");
    computer.store->setLocation(dead.string());
    EXPECT_TRUE(runUntil([&] { return computer.store->hasBeenRead(); }));
    EXPECT_EQ(computer.store->data("commands"), "[dead]");
}

TEST_F(FolderCloudStoreTest, mayEndDuringAVisit) {
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

TEST_F(FolderCloudStoreTest, looksNowAndThenWhereTheKernelDoesNotTell) {
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

TEST_F(FolderCloudStoreTest, aFolderAtRestIsNotVisited) {
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
