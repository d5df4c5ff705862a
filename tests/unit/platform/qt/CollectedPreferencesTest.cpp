#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLockFile>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/FileSizeLimit.h"
#include "tests/support/ImmutableFile.h"
#include "tests/unit/platform/qt/PreferencesDesk.h"

// When changes are written, tried again, and told.

namespace lumatile {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

class CollectedPreferences : public QSettingsPreferencesTest {
protected:
    QSettingsPreferences& preferences() { return preferences_.impatient(); }
    SimulatedRunLoop& runLoop() { return preferences_.runLoop(); }
    std::string text() const { return fs::exists(file_) ? readFile(file_) : ""; }
};

TEST_F(CollectedPreferences, aChangeIsWrittenWhenTheCallHasReturnedAndTheNextOnesTogether) {
    preferences().setBytes("commands", "[1]");
    EXPECT_EQ(text(), "") << "not in the call";
    EXPECT_EQ(preferences().bytes("commands"), "[1]") << "where it counts at once";
    runLoop().settle();
    EXPECT_THAT(text(), HasSubstr("[1]"));
    const auto former = fs::last_write_time(file_);
    for (int change = 0; change < 100; ++change) {
        preferences().setBytes("commands", std::to_string(change));
        preferences().setBytes("oledSettings", "{}");
        runLoop().settle();
    }
    EXPECT_EQ(fs::last_write_time(file_), former);
    runLoop().advance(1);
    EXPECT_THAT(text(), AllOf(HasSubstr("(99)"), HasSubstr("{}")));
    EXPECT_EQ(runLoop().timerCount(), 0U) << "nothing is left to wake up for";
}

TEST_F(CollectedPreferences, tenThousandChangesTakeNoTimeAndTheLastOneIsStored) {
    const auto start = std::chrono::steady_clock::now();
    for (int change = 0; change < 10'000; ++change) {
        preferences().setBytes("oledSettings", std::to_string(change));
        preferences().setBytes("__ts", std::to_string(change));
        runLoop().settle();
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2))
        << "with sanitizers; a write each took half a minute";
    runLoop().advance(1);
    EXPECT_EQ(onDisk().bytes("oledSettings"), "9999");
}

TEST_F(CollectedPreferences, whatIsNotWrittenYetIsWrittenAtTheEnd) {
    {
        const auto program = started();
        program->impatient().setBytes("commands", "[1]");
        program->runLoop().settle();
        program->impatient().setBytes("commands", "[2]");
    }
    EXPECT_EQ(onDisk().bytes("commands"), "[2]");
}

TEST_F(CollectedPreferences, aValueThatIsStoredAlreadyIsNotWrittenAgain) {
    preferences_.setBytes("commands", "[1]");
    const auto former = fs::last_write_time(file_);
    preferences_.setBytes("commands", "[1]");
    preferences_.remove("oledSettings");
    EXPECT_EQ(fs::last_write_time(file_), former);
}

TEST_F(CollectedPreferences, anotherProcesssLockHoldsNothingUpAndIsToldAfterSomeSeconds) {
    preferences_.setBytes("commands", "[1]");
    std::optional<QLockFile> lock(std::in_place, QString::fromStdString(file_.string() + ".lock"));
    ASSERT_TRUE(lock->tryLock(0));
    const auto start = std::chrono::steady_clock::now();
    preferences().setBytes("commands", "[2]");
    preferences().setBytes("__ts", "2");
    runLoop().advance(3);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
    EXPECT_FALSE(preferences().trouble()) << "it may be writing";
    runLoop().advance(3);
    ASSERT_TRUE(preferences().trouble());
    EXPECT_THAT(log_.lines, ElementsAre(HasSubstr("another program keeps it locked")));
    lock.reset();
    runLoop().advance(10);
    EXPECT_FALSE(preferences().trouble());
    EXPECT_EQ(onDisk().bytes("commands"), "[2]");
    EXPECT_THAT(log_.lines, SizeIs(1));
}

TEST_F(CollectedPreferences, oneFailedEditIsOneLineAndIsTriedAgainEveryTenSeconds) {
    preferences_.setBytes("commands", "[1]");
    std::vector<bool> told;
    const auto observation =
        preferences().observeTrouble([&] { told.push_back(preferences().trouble().has_value()); });
    {
        const FileSizeLimit full(0);
        // As an edit of the commands does.
        preferences().setBytes("commands", "[2]");
        preferences().setBytes("__ts", "2");
        preferences().setBytes("__lastSync", "2");
        runLoop().advance(35);
        EXPECT_THAT(log_.lines,
                    ElementsAre(AllOf(HasSubstr(file_.string()), HasSubstr("File too large"))));
        ASSERT_TRUE(preferences().trouble());
        EXPECT_EQ("Preferences: " + preferences().trouble()->line, log_.lines.front());
        EXPECT_FALSE(preferences().trouble()->canSetAside);
    }
    runLoop().advance(10);
    EXPECT_EQ(onDisk().bytes("commands"), "[2]");
    EXPECT_EQ(onDisk().bytes("__lastSync"), "2");
    EXPECT_FALSE(preferences().trouble());
    EXPECT_THAT(told, ElementsAre(true, false));
    EXPECT_THAT(log_.lines, SizeIs(1));
    runLoop().advance(1);
    EXPECT_EQ(runLoop().timerCount(), 0U);
}

TEST_F(CollectedPreferences, whatTheDiskRefusedIsTriedAgainAtTheEnd) {
    {
        const auto program = started();
        {
            const FileSizeLimit full(0);
            program->setBytes("commands", "[1]");
            EXPECT_FALSE(fs::exists(file_));
        }
    }
    EXPECT_EQ(onDisk().bytes("commands"), "[1]");
}

TEST_F(CollectedPreferences, aWriteProtectedFileIsNotReplacedAndItIsSaid) {
    preferences_.setBytes("commands", "[1]");
    fs::permissions(file_, fs::perms::owner_read);
    const std::string before = text();
    preferences_.setBytes("commands", "[2]");
    EXPECT_EQ(text(), before);
    ASSERT_TRUE(preferences().trouble());
    EXPECT_THAT(preferences().trouble()->line, HasSubstr("write-protected"));
    EXPECT_THAT(log_.lines, SizeIs(1));
    fs::permissions(file_, fs::perms::owner_read | fs::perms::owner_write);
    runLoop().advance(10);
    EXPECT_FALSE(preferences().trouble());
    EXPECT_EQ(onDisk().bytes("commands"), "[2]");
}

TEST_F(CollectedPreferences, anImmutableFileIsNotReplacedAndItIsSaid) {
    preferences_.setBytes("commands", "[1]");
    {
        const ImmutableFile locked(file_);
        if (!locked.isSo()) {
            GTEST_SKIP() << "this file system knows no immutable files";
        }
        preferences_.setBytes("commands", "[2]");
        EXPECT_EQ(onDisk().bytes("commands"), "[1]");
        ASSERT_TRUE(preferences().trouble());
        EXPECT_THAT(preferences().trouble()->line, HasSubstr("write-protected"));
        EXPECT_THAT(log_.lines, SizeIs(1));
    }
    runLoop().advance(10);
    EXPECT_FALSE(preferences().trouble());
    EXPECT_EQ(onDisk().bytes("commands"), "[2]");
}

TEST_F(CollectedPreferences, whatCouldNotBeReadAgainIsNotWrittenAndItIsSaid) {
    preferences_.setBytes("commands", "[1]");
    // Each of these bytes takes four characters in the file, which may be 5 MiB long.
    constexpr std::size_t fitting = std::size_t{5} * 1024 * 1024 / 4 - 100;
    preferences_.setBytes("commands", Bytes(fitting + 100, '\xff'));
    EXPECT_EQ(onDisk().bytes("commands"), "[1]");
    ASSERT_TRUE(preferences().trouble());
    EXPECT_THAT(preferences().trouble()->line, HasSubstr("too long to be read again"));
    EXPECT_THAT(log_.lines, SizeIs(1));
    preferences_.setBytes("commands", Bytes(fitting, '\xff'));
    EXPECT_FALSE(preferences().trouble());
    EXPECT_EQ(onDisk().bytes("commands")->size(), fitting);
}

}  // namespace
}  // namespace lumatile
