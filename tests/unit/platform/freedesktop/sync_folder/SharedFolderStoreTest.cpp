#include "platform/freedesktop/sync_folder/SharedFolderStore.h"

#include <gtest/gtest.h>

#include "tests/unit/platform/freedesktop/sync_folder/FolderStoreTest.h"

namespace lumatile {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(SharedFolderStoreTest, withoutAFolderThereIsNothing) {
    computer.start();
    computer.change(1, "[1]");
    computer.settle();
    EXPECT_FALSE(computer.store->hasBeenRead());
    EXPECT_FALSE(computer.store->data("commands"));
    EXPECT_EQ(computer.condition(), Condition::noLocation);
    EXPECT_THAT(computer.told, IsEmpty());
}

TEST_F(SharedFolderStoreTest, anEmptyFolderIsAFirstContact) {
    computer.start(folder.path());
    EXPECT_THAT(computer.told, ElementsAre(3, 1));
    EXPECT_TRUE(computer.store->hasBeenRead());
    EXPECT_FALSE(computer.store->data("commands"));
    EXPECT_EQ(computer.condition(), Condition::current);
    EXPECT_EQ(computer.store->status().location, folder.path().string());
    EXPECT_THAT(folder.names(), IsEmpty()) << "nothing is written before there is something";
}

TEST_F(SharedFolderStoreTest, whatIsSetBecomesTheFileAndIsNoChangeFromOutside) {
    computer.start(folder.path());
    computer.change(5, "[1]");
    EXPECT_EQ(computer.store->data("commands"), "[1]");
    EXPECT_EQ(computer.condition(), Condition::sending);
    computer.settle();
    EXPECT_EQ(readFile(file), textOf(5, "[1]"));
    EXPECT_THAT(folder.names(), ElementsAre(SyncFolderVisit::fileName));
    EXPECT_THAT(computer.told, ElementsAre(3, 1));
    EXPECT_EQ(computer.condition(), Condition::current);
    EXPECT_TRUE(computer.store->status().lastSynced);
    struct stat status {};
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST_F(SharedFolderStoreTest, whatIsSetIsWrittenWithoutBeingAskedFor) {
    computer.start(folder.path());
    computer.store->set("[1]", "commands");
    computer.store->set(SyncTimestamp::encode(5), "__ts");
    computer.settle();
    EXPECT_EQ(readFile(file), textOf(5, "[1]"));
}

TEST_F(SharedFolderStoreTest, aKnownFolderIsReadWithoutAReason) {
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

TEST_F(SharedFolderStoreTest, aFileThatIsReplacedIsAChangeByAnother) {
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

TEST_F(SharedFolderStoreTest, aFileThatIsWrittenInPlaceIsReadWhenItIsWhole) {
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

TEST_F(SharedFolderStoreTest, aFolderThatIsMadeLaterIsFound) {
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
    EXPECT_EQ(readFile(later / SyncFolderVisit::fileName), textOf(5, "[1]"));
    EXPECT_THAT(computer.log.lines(), SizeIs(1));
}

TEST_F(SharedFolderStoreTest, ofAChangeBeforeTheFirstReadingAndWhatLiesThereTheLaterCounts) {
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
        EXPECT_EQ(readFile(later / SyncFolderVisit::fileName),
                  isLater ? textOf(there, "[there]") : textOf(5, "[here]"));
        EXPECT_EQ(computer.store->data("commands"), isLater ? "[there]" : "[here]");
        computer.store->setLocation(std::nullopt);
        computer.settle();
    }
}

TEST_F(SharedFolderStoreTest, aFolderThatGoesAndComesIsAnsweredFromMemoryMeanwhile) {
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
    EXPECT_EQ(readFile(shared / SyncFolderVisit::fileName), textOf(6, "[2]"));
    EXPECT_EQ(computer.condition(), Condition::current);
}

TEST_F(SharedFolderStoreTest, anotherFolderIsReadAnewAndTheFormerIsLeft) {
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
    EXPECT_EQ(readFile(two / SyncFolderVisit::fileName), textOf(3, "[two]"));
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

TEST_F(SharedFolderStoreTest, whatIsNoPathIsNotReachable) {
    for (const std::string& path : {std::string("relative"), std::string(),
                                    std::string(5000, '/') + "x", "/" + std::string(300, 'n'),
                                    std::string("/tmp\0x", 6), file.string() + "/below/a/file"}) {
        computer.start(path);
        EXPECT_EQ(computer.condition(), Condition::notReachable) << path;
        EXPECT_FALSE(computer.store->hasBeenRead()) << path;
    }
}

}  // namespace
}  // namespace lumatile
