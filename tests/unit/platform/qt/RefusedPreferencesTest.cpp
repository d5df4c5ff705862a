#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/FileSizeLimit.h"
#include "tests/unit/platform/qt/PreferencesDesk.h"

// Disks that refuse what is to be stored.

namespace lumatile {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

TEST_F(QSettingsPreferencesTest, aRemovalThatTheDiskRefusedComesWithTheNextChange) {
    preferences_.setBytes("commands", "[1]");
    const std::string before = readFile(file_);
    {
        const FileSizeLimit full(0);
        preferences_.setBytes("oledSettings", "{}");
        preferences_.remove("commands");
        EXPECT_FALSE(preferences_.bytes("commands"));
        EXPECT_EQ(readFile(file_), before);
    }
    EXPECT_THAT(log_.lines, SizeIs(2));
    preferences_.setBoolean("dragToSnapEnabled", true);
    EXPECT_FALSE(onDisk().bytes("commands"));
    EXPECT_EQ(onDisk().bytes("oledSettings"), "{}");
}

TEST_F(QSettingsPreferencesTest, aFullDiskLosesNothing) {
    preferences_.setBytes("commands", "[1]");
    preferences_.setBoolean("dragToSnapEnabled", true);
    const std::string before = readFile(file_);
    const Bytes large(100000, 'x');
    {
        const FileSizeLimit full(4096);
        preferences_.setBytes("commands", large);
        EXPECT_THAT(log_.lines,
                    ElementsAre(AllOf(StartsWith("Preferences: "), HasSubstr(file_.string()))));
        EXPECT_EQ(preferences_.bytes("commands"), large);
        EXPECT_EQ(preferences_.boolean("dragToSnapEnabled"), true);
        EXPECT_EQ(readFile(file_), before);

        preferences_.setBoolean("dragToSnapEnabled", false);
        EXPECT_THAT(log_.lines, SizeIs(2));
        EXPECT_EQ(preferences_.boolean("dragToSnapEnabled"), false);
        EXPECT_EQ(preferences_.bytes("commands"), large);
        EXPECT_EQ(readFile(file_), before);
    }
    // There is room again: the next change takes the others along.
    preferences_.setBytes("oledSettings", "{}");
    EXPECT_THAT(log_.lines, SizeIs(2));
    EXPECT_EQ(onDisk().bytes("commands"), large);
    EXPECT_EQ(onDisk().boolean("dragToSnapEnabled"), false);
    EXPECT_EQ(onDisk().bytes("oledSettings"), "{}");
    // Nothing is left lying about.
    EXPECT_THAT(std::vector<fs::path>(fs::directory_iterator(file_.parent_path()), {}),
                ElementsAre(file_));
}

TEST_F(QSettingsPreferencesTest, aDiskThatIsFullAtAnyPlaceLosesNothing) {
    preferences_.setBytes("commands", "[1]");
    preferences_.setBytes("oledSettings", "{}");
    const std::string before = readFile(file_);
    const Bytes grown(150, 'x');
    // The least room in which the change fits; one byte less does not do.
    bool fitted = false;
    for (rlim_t room = 64; room < 400; ++room) {
        log_.lines.clear();
        {
            const FileSizeLimit full(room);
            preferences_.setBytes("commands", grown);
        }
        if (log_.lines.empty()) {
            fitted = true;
            EXPECT_EQ(readFile(file_).size(), room);
            break;
        }
        ASSERT_EQ(readFile(file_), before) << room;
    }
    EXPECT_TRUE(fitted);
    EXPECT_EQ(onDisk().bytes("commands"), grown);
    EXPECT_EQ(onDisk().bytes("oledSettings"), "{}");
}

// Left by a process that was killed at the wrong moment; with a name in it, it would be told to be
// of a process that is gone.
TEST_F(QSettingsPreferencesTest, aLockWithoutANameHoldsUpOneSaveForAMomentAndNoneForLong) {
    const fs::path lock = file_.string() + ".lock";
    write(lock, "");
    preferences_.setBytes("commands", "[1]");
    EXPECT_FALSE(fs::exists(file_)) << "another process may be about to write its name";
    fs::last_write_time(lock, fs::last_write_time(lock) - std::chrono::seconds(1));
    preferences_.runLoop().advance(1);
    EXPECT_THAT(log_.lines, IsEmpty());
    EXPECT_EQ(onDisk().bytes("commands"), "[1]");
    EXPECT_FALSE(fs::exists(file_.string() + ".lock"));
}

TEST_F(QSettingsPreferencesTest, whatTheDiskRefusedIsOverwrittenByALaterValue) {
    preferences_.setBytes("commands", "[1]");
    {
        const FileSizeLimit full(512);
        preferences_.setBytes("commands", Bytes(5000, 'x'));
        preferences_.setBytes("commands", "[2]");
    }
    EXPECT_THAT(log_.lines, SizeIs(1));
    EXPECT_EQ(onDisk().bytes("commands"), "[2]");
    EXPECT_EQ(preferences_.bytes("commands"), "[2]");
    // From now on the file is what counts again.
    write(file_, "[General]\ncommands=@ByteArray([by another])\n");
    EXPECT_EQ(preferences_.bytes("commands"), "[by another]");
}

TEST_F(QSettingsPreferencesTest, aChangeByAnotherProcessOnAFullDiskIsKept) {
    preferences_.setBytes("commands", "[1]");
    {
        const FileSizeLimit full(512);
        preferences_.setBytes("commands", Bytes(5000, 'x'));
        write(file_, "[General]\nnew=thing\n");
        EXPECT_EQ(preferences_.bytes("commands"), Bytes(5000, 'x'));
    }
    preferences_.setBytes("oledSettings", "{}");
    EXPECT_THAT(readFile(file_), HasSubstr("new=thing\n"));
    EXPECT_EQ(onDisk().bytes("commands"), Bytes(5000, 'x'));
    EXPECT_EQ(onDisk().bytes("oledSettings"), "{}");
}

TEST_F(QSettingsPreferencesTest, aFolderThatCannotBeMadeIsTriedAgain) {
    write(file_.parent_path(), "a file where the folder should be");
    preferences_.setBytes("commands", "[1]");
    EXPECT_THAT(log_.lines, ElementsAre(StartsWith("Preferences: ")));
    EXPECT_EQ(preferences_.bytes("commands"), "[1]");
    EXPECT_EQ(readFile(file_.parent_path()), "a file where the folder should be");
    fs::remove(file_.parent_path());
    preferences_.setBytes("oledSettings", "{}");
    EXPECT_THAT(log_.lines, SizeIs(1));
    EXPECT_EQ(onDisk().bytes("commands"), "[1]");
    EXPECT_EQ(onDisk().bytes("oledSettings"), "{}");
}

TEST_F(QSettingsPreferencesTest, whatIsNoFileIsLeftAlone) {
    fs::create_directories(file_);  // A folder.
    EXPECT_EQ(preferences_.bytes("commands"), std::nullopt);
    preferences_.setBytes("commands", "[1]");
    EXPECT_EQ(preferences_.bytes("commands"), "[1]");
    EXPECT_THAT(log_.lines, SizeIs(1));
    fs::remove(file_);
    ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);  // To open it would block.
    EXPECT_EQ(preferences_.bytes("oledSettings"), std::nullopt);
    preferences_.setBytes("oledSettings", "{}");
    EXPECT_EQ(preferences_.bytes("oledSettings"), "{}");
    EXPECT_THAT(log_.lines, SizeIs(2));
    EXPECT_TRUE(fs::is_fifo(file_));
}

TEST_F(QSettingsPreferencesTest, anAbsurdlyLongFileIsNeitherReadNorOverwritten) {
    preferences_.setBytes("commands", "[1]");
    constexpr std::uintmax_t absurd = std::uintmax_t{4} << 30U;
    fs::resize_file(file_, absurd);  // A hole: takes no room.
    EXPECT_EQ(preferences_.bytes("commands"), std::nullopt);
    preferences_.setBytes("oledSettings", "{}");
    EXPECT_EQ(preferences_.bytes("oledSettings"), "{}");
    EXPECT_EQ(fs::file_size(file_), absurd);
    EXPECT_THAT(log_.lines, SizeIs(1));
}

}  // namespace
}  // namespace lumatile
