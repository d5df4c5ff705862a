#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/support/FileSizeLimit.h"
#include "tests/unit/platform/freedesktop/sync_folder/FolderStoreTest.h"

// Files that are missing or damaged, and disks that refuse.

namespace lumatile {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// As where a mount point lies empty because nothing is mounted.
TEST_F(SharedFolderStoreTest, aKnownFolderWithoutItsFileIsNotBegunAnew) {
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
    EXPECT_EQ(readFile(file), textOf(6, "[2]"));
    EXPECT_EQ(computer.condition(), Condition::current);
}

TEST_F(SharedFolderStoreTest, aFileThatIsGoneForAMomentIsNotSpokenOf) {
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

TEST_F(SharedFolderStoreTest, theUserMayHaveAMissingFileWrittenAnew) {
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
    EXPECT_EQ(readFile(file), textOf(6, "[2]"));
}

TEST_F(SharedFolderStoreTest, aFileCutOffAnywhereIsRefusedAndLeftAlone) {
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
        ASSERT_EQ(readFile(file), cut) << length;
    }
    EXPECT_THAT(computer.told, ElementsAre(3, 1));
    EXPECT_THAT(computer.log.lines(), ElementsAre(HasSubstr("damaged")));
    computer.change(6, "[2]");
    computer.settle();
    EXPECT_EQ(readFile(file), text.substr(0, text.size() - 1));
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

RC_GTEST_FIXTURE_PROP(SharedFolderStoreTest, aFileOfWhichABitIsWrongIsRefused, ()) {
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
    RC_ASSERT(readFile(file) == text);
}

TEST_F(SharedFolderStoreTest, whatIsNoFileOrTooLargeIsRefused) {
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

TEST_F(SharedFolderStoreTest, theUserMayHaveADamagedFileReplacedAndKeepsIt) {
    replaceFile(file, "damaged");
    computer.start(folder.path());
    EXPECT_FALSE(computer.store->hasBeenRead());
    EXPECT_THAT(computer.told, ElementsAre(3));
    computer.store->startAnew();
    computer.settle();
    EXPECT_THAT(computer.told, ElementsAre(3, 1));
    EXPECT_EQ(readFile(file), "damaged") << "until there is something to write";
    computer.change(5, "[1]");
    computer.settle();
    EXPECT_EQ(readFile(file), textOf(5, "[1]"));
    EXPECT_EQ(readFile(aside / "lumatile-settings.damaged.json"), "damaged");
    EXPECT_EQ(computer.store->status().copiesPutAside, 1U);
    EXPECT_EQ(computer.condition(), Condition::current);
}

TEST_F(SharedFolderStoreTest, aGoodFileThatArrivesMeanwhileIsNotReplacedUnread) {
    replaceFile(file, "damaged");
    computer.start(folder.path());
    replaceFile(file, textOf(9, "[there]"));
    computer.store->startAnew();
    computer.change(5, "[1]");
    computer.settle();
    EXPECT_EQ(readFile(file), textOf(9, "[there]"));
    EXPECT_EQ(computer.store->data("commands"), "[there]");
}

TEST_F(SharedFolderStoreTest, aFullDiskIsToldOnceAndTriedAgain) {
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
        EXPECT_EQ(readFile(file), textOf(5, "[1]"));
        EXPECT_THAT(folder.names(), ElementsAre(SyncFolderVisit::fileName));
    }
    EXPECT_TRUE(runUntil([&] { return computer.condition() == Condition::current; }));
    EXPECT_EQ(readFile(file), textOf(6, "[2]"));
    EXPECT_THAT(computer.told, ElementsAre(3, 1, 2));
    EXPECT_THAT(computer.log.lines(), ElementsAre(HasSubstr("cannot be written")));
}

TEST_F(SharedFolderStoreTest, aFolderThatOnlyOthersMayWriteIsRead) {
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
        EXPECT_EQ(readFile(file), textOf(5, "[there]"));
    }
    // What becomes allowed is seen without being told.
    fs::permissions(folder.path(), fs::perms(0755));
    computer.settle();
    EXPECT_EQ(readFile(file), textOf(6, "[here]"));
}

TEST_F(SharedFolderStoreTest, aValueOverAMebibyteIsRefused) {
    computer.start(folder.path());
    computer.change(5, "[1]");
    computer.settle();
    computer.change(6, Bytes(SharedStore::largestValue + 1, ' '));
    computer.settle();
    EXPECT_THAT(computer.told, ElementsAre(3, 1, 2));
    EXPECT_EQ(computer.condition(), Condition::tooLarge);
    EXPECT_EQ(computer.store->data("commands"), "[1]");
    EXPECT_EQ(readFile(file), textOf(5, "[1]"));
    computer.change(7, "[2]");
    computer.settle();
    EXPECT_EQ(computer.condition(), Condition::current);
    EXPECT_EQ(readFile(file), textOf(7, "[2]"));
}

TEST_F(SharedFolderStoreTest, aValueOverAMebibyteIsRefusedAlsoByAVisitThatComesFirst) {
    computer.start(folder.path());
    replaceFile(file, "{");
    ASSERT_TRUE(runUntil([this] { return computer.condition() == Condition::damaged; }));
    computer.settle();
    computer.store->set(Bytes(SharedStore::largestValue + 1, ' '), "commands");
    computer.store->startAnew();
    computer.settle();
    EXPECT_THAT(computer.told, ElementsAre(3, 1, 1, 2));
    EXPECT_EQ(computer.condition(), Condition::tooLarge);
    EXPECT_EQ(readFile(file), "{");
}

}  // namespace
}  // namespace lumatile
