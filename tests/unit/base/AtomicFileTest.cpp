#include "base/AtomicFile.h"

#include <csignal>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/FileSizeLimit.h"
#include "tests/support/TemporaryFolder.h"

namespace lumatile {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

constexpr fs::perms ownerOnly = fs::perms::owner_read | fs::perms::owner_write;

/// Sets the mask of new files for its lifetime.
class FileMask {
public:
    explicit FileMask(mode_t mask) : previous_(::umask(mask)) {}
    FileMask(const FileMask&) = delete;
    FileMask& operator=(const FileMask&) = delete;
    ~FileMask() { ::umask(previous_); }

private:
    mode_t previous_;
};

/// Changes into a folder for its lifetime.
class WorkingFolder {
public:
    explicit WorkingFolder(const fs::path& folder) : previous_(fs::current_path()) {
        fs::current_path(folder);
    }
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;
    ~WorkingFolder() {
        std::error_code ignored;
        fs::current_path(previous_, ignored);
    }

private:
    fs::path previous_;
};

TEST(AtomicFileReplacing, makesANewFile) {
    const TemporaryFolder folder;
    EXPECT_FALSE(AtomicFile::replace(folder / "new.json", "text"));
    EXPECT_EQ(folder.read("new.json"), "text");
    EXPECT_EQ(folder.names(), Names{"new.json"});
}

TEST(AtomicFileReplacing, replacesAnOldOne) {
    const TemporaryFolder folder;
    folder.write("file", "a longer old text");
    EXPECT_FALSE(AtomicFile::replace(folder / "file", "new"));
    EXPECT_EQ(folder.read("file"), "new");
    EXPECT_FALSE(AtomicFile::replace(folder / "file", ""));
    EXPECT_EQ(folder.read("file"), "");
    EXPECT_EQ(folder.names(), Names{"file"});
}

TEST(AtomicFileReplacing, writesLongTextsAndEveryByte) {
    const TemporaryFolder folder;
    std::string bytes;
    for (int i = 0; i < 1 << 20; ++i) {
        bytes += static_cast<char>(i * 31 % 256);
    }
    EXPECT_FALSE(AtomicFile::replace(folder / "file", bytes));
    EXPECT_EQ(folder.read("file"), bytes);
}

TEST(AtomicFileReplacing, isAnotherFileUnderTheSameName) {
    const TemporaryFolder folder;
    folder.write("file", "old");
    fs::create_hard_link(folder / "file", folder / "second name");
    EXPECT_FALSE(AtomicFile::replace(folder / "file", "new"));
    EXPECT_EQ(folder.read("second name"), "old") << "the old file was never written to";
}

TEST(AtomicFileReplacing, onlyTheOwnerMayReadTheFile) {
    const TemporaryFolder folder;
    for (const mode_t mask : {mode_t{0}, mode_t{022}, mode_t{0777}}) {
        const FileMask masked(mask);
        EXPECT_FALSE(AtomicFile::replace(folder / "file", "text"));
        EXPECT_EQ(fs::status(folder / "file").permissions(), ownerOnly) << mask;
    }
    fs::permissions(folder / "file", fs::perms::all);
    EXPECT_FALSE(AtomicFile::replace(folder / "file", "text"));
    EXPECT_EQ(fs::status(folder / "file").permissions(), ownerOnly);
}

TEST(AtomicFileReplacing, keepsASymbolicLinkAndReplacesWhatItLeadsTo) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "other");
    folder.write("other/target", "old");
    fs::create_symlink("other/target", folder / "link");
    EXPECT_FALSE(AtomicFile::replace(folder / "link", "new"));
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(folder.read("other/target"), "new");
    EXPECT_EQ(folder.names(), (Names{"link", "other"}));
}

TEST(AtomicFileReplacing, aLinkThatLeadsNowhereGivesWayToTheFile) {
    const TemporaryFolder folder;
    fs::create_symlink("nowhere", folder / "link");
    EXPECT_FALSE(AtomicFile::replace(folder / "link", "new"));
    EXPECT_FALSE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(folder.read("link"), "new");
    EXPECT_EQ(folder.names(), Names{"link"});
}

TEST(AtomicFileReplacing, aNameWithoutAFolderIsInTheWorkingFolder) {
    const TemporaryFolder folder;
    const WorkingFolder here(folder.path());
    EXPECT_FALSE(AtomicFile::replace("file", "text"));
    EXPECT_EQ(folder.read("file"), "text");
}

TEST(AtomicFileReplacing, aNameOfTheGreatestLengthIsNoHindrance) {
    const TemporaryFolder folder;
    const std::string name(255, 'n');
    EXPECT_FALSE(AtomicFile::replace(folder / name, "text"));
    EXPECT_EQ(folder.names(), Names{name});
    EXPECT_EQ(AtomicFile::replace(folder / (name + "n"), "text"), std::errc::filename_too_long);
    EXPECT_EQ(folder.names(), Names{name});
}

TEST(AtomicFileReplacing, failsWithoutTheFolder) {
    const TemporaryFolder folder;
    EXPECT_EQ(AtomicFile::replace(folder / "missing/file", "text"),
              std::errc::no_such_file_or_directory);
    folder.write("file", "text");
    EXPECT_EQ(AtomicFile::replace(folder / "file/file", "text"), std::errc::not_a_directory);
    EXPECT_EQ(folder.names(), Names{"file"});
}

TEST(AtomicFileReplacing, leavesWhatIsNoRegularFileAlone) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "empty");
    EXPECT_EQ(AtomicFile::replace(folder / "empty", "text"), std::errc::is_a_directory);
    EXPECT_EQ(AtomicFile::replace(folder / "empty/", "text"), std::errc::is_a_directory);
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(AtomicFile::replace(folder / "pipe", "text"), std::errc::invalid_argument);
    EXPECT_EQ(AtomicFile::replace("", "text"), std::errc::is_a_directory);
    EXPECT_TRUE(fs::is_directory(folder / "empty"));
    EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
    EXPECT_EQ(folder.names(), (Names{"empty", "pipe"}));
}

TEST(AtomicFileReplacing, aFullDiskLeavesTheOldFileAndNothingElse) {
    const TemporaryFolder folder;
    folder.write("file", "old");
    {
        const FileSizeLimit limit(1000);
        EXPECT_EQ(AtomicFile::replace(folder / "file", std::string(1001, 'x')),
                  std::errc::file_too_large);
        EXPECT_EQ(AtomicFile::replace(folder / "new", std::string(5000, 'x')),
                  std::errc::file_too_large);
        EXPECT_EQ(folder.names(), Names{"file"});
        EXPECT_EQ(folder.read("file"), "old");
        EXPECT_FALSE(AtomicFile::replace(folder / "file", std::string(1000, 'y')));
    }
    EXPECT_EQ(folder.read("file"), std::string(1000, 'y'));
    EXPECT_EQ(folder.names(), Names{"file"});
}

/// Another process is killed while it replaces a file.
void beKilledWriting(const fs::path& path, std::string_view writer) {
    const pid_t child = ::fork();
    if (child == 0) {
        constexpr rlim_t mostBytes = 1000;
        const rlimit noDump{0, 0};
        const rlimit limit{mostBytes, mostBytes};
        ::setrlimit(RLIMIT_CORE, &noDump);
        ::setrlimit(RLIMIT_FSIZE, &limit);
        ::signal(SIGXFSZ, SIG_DFL);
        AtomicFile::replace(path, std::string(mostBytes, 'x') + "one more", writer);
        ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
}

TEST(AtomicFileLeftovers, ofAKilledWriterAreRemovedUnderItsNameAlone) {
    const TemporaryFolder folder;
    folder.write("file", "old");
    beKilledWriting(folder / "file", "me");
    ASSERT_EQ(folder.names().size(), 2U);
    EXPECT_TRUE(folder.names().front().starts_with(".lumatile-me-"));
    EXPECT_EQ(folder.read("file"), "old");
    AtomicFile::removeLeftovers(folder.path(), "m");
    AtomicFile::removeLeftovers(folder.path(), "you");
    EXPECT_EQ(folder.names().size(), 2U);
    AtomicFile::removeLeftovers(folder.path(), "me");
    EXPECT_EQ(folder.names(), Names{"file"});
    AtomicFile::removeLeftovers(folder / "missing", "me");
}

TEST(AtomicFileLeftovers, whatIsBeingWrittenIsNone) {
    const TemporaryFolder folder;
    folder.write(".lumatile-me-1", "");
    const int writing = ::open((folder / ".lumatile-me-1").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(::flock(writing, LOCK_EX), 0);
    AtomicFile::removeLeftovers(folder.path(), "me");
    EXPECT_EQ(folder.names(), Names{".lumatile-me-1"});
    ::close(writing);
    AtomicFile::removeLeftovers(folder.path(), "me");
    EXPECT_EQ(folder.names(), Names{});
}

TEST(AtomicFileReading, readsTheWholeFile) {
    const TemporaryFolder folder;
    const std::string text(200'000, 'x');
    folder.write("file", text + "end");
    std::string bytes = "before";
    EXPECT_FALSE(AtomicFile::read(folder / "file", 1'000'000, bytes));
    EXPECT_EQ(bytes, text + "end");
    folder.write("empty", "");
    EXPECT_FALSE(AtomicFile::read(folder / "empty", 0, bytes));
    EXPECT_EQ(bytes, "");
}

TEST(AtomicFileReading, isBounded) {
    const TemporaryFolder folder;
    folder.write("file", std::string(1000, 'x'));
    std::string bytes;
    EXPECT_FALSE(AtomicFile::read(folder / "file", 1000, bytes));
    EXPECT_EQ(AtomicFile::read(folder / "file", 999, bytes), std::errc::file_too_large);
    EXPECT_EQ(AtomicFile::read(folder / "file", 0, bytes), std::errc::file_too_large);
}

TEST(AtomicFileReading, failsOnWhatIsNoRegularFile) {
    const TemporaryFolder folder;
    std::string bytes;
    EXPECT_EQ(AtomicFile::read(folder / "missing", 10, bytes),
              std::errc::no_such_file_or_directory);
    EXPECT_EQ(AtomicFile::read(folder.path(), 10, bytes), std::errc::is_a_directory);
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(AtomicFile::read(folder / "pipe", 10, bytes), std::errc::invalid_argument)
        << "without waiting for a writer";
    EXPECT_EQ(AtomicFile::read("/dev/zero", 10, bytes), std::errc::invalid_argument);
}

}  // namespace
}  // namespace lumatile
