#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "tests/unit/platform/qt/PreferencesDesk.h"

// What a program finds that starts.

namespace lumatile {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string noise() {
    constexpr std::size_t length = std::size_t{1} << 20U;
    std::mt19937 random(1);
    std::string text(length, ' ');
    for (char& c : text) {
        c = static_cast<char>(random());
    }
    return text;
}

std::string manyKeys(int keys) {
    std::string text = "[General]\n";
    for (int key = 0; key < keys; ++key) {
        text += "k" + std::to_string(key) + "=1\n";
    }
    return text;
}

class PreferencesStart : public QSettingsPreferencesTest {
protected:
    PreferencesStart() { fs::create_directories(file_.parent_path()); }

    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(file_.parent_path())) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }
};

TEST_F(PreferencesStart, whatIsNotReadIsSaidOnceAndCanBeSetAside) {
    struct Case {
        std::string reason;
        std::function<void()> put;
    };
    const std::vector<Case> cases = {
        {"is a folder", [&] { fs::create_directory(file_); }},
        {"is no ordinary file", [&] { ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0); }},
        {"holds serialised values",
         [&] { write(file_, "[General]\ncommands=@Variant(\\0\\0)\n"); }},
        {"is no text", [&] { write(file_, noise()); }},
        {"holds more than 10,000 values", [&] { write(file_, manyKeys(20'000)); }},
        {"cannot be read", [&] { fs::create_symlink(file_, file_); }},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.reason);
        log_.lines.clear();
        each.put();
        const auto program = started();
        EXPECT_THAT(log_.lines,
                    ElementsAre(testing::AllOf(HasSubstr(file_.string()), HasSubstr(each.reason))));
        ASSERT_TRUE(program->impatient().trouble());
        EXPECT_TRUE(program->impatient().trouble()->canSetAside);
        EXPECT_EQ("Preferences: " + program->impatient().trouble()->line, log_.lines.front());
        EXPECT_EQ(program->bytes("commands"), std::nullopt);
        program->runLoop().advance(60);
        EXPECT_EQ(log_.lines.size(), 1U);
        program->setBytes("commands", "[2]");
        EXPECT_EQ(log_.lines.size(), 2U) << "a change that is not stored";
        EXPECT_THAT(names(), ElementsAre("lumatile.conf"));

        program->impatient().setAside();
        EXPECT_FALSE(program->impatient().trouble());
        EXPECT_EQ(onDisk().bytes("commands"), "[2]");
        EXPECT_THAT(names(), ElementsAre("lumatile.conf", "lumatile.conf.set-aside"));
        program->runLoop().advance(1);
        EXPECT_EQ(program->runLoop().timerCount(), 0U);
        fs::remove(file_);
        fs::remove(file_.string() + ".set-aside");
    }
}

TEST_F(PreferencesStart, nothingThatWasSetAsideIsOverwritten) {
    for (int round = 0; round < 3; ++round) {
        fs::create_directory(file_);
        started()->impatient().setAside();
        EXPECT_FALSE(fs::exists(file_));
    }
    EXPECT_THAT(names(), ElementsAre("lumatile.conf.set-aside", "lumatile.conf.set-aside-2",
                                     "lumatile.conf.set-aside-3"));
}

TEST_F(PreferencesStart, aFileThatIsMendedMeanwhileIsFound) {
    write(file_, noise());
    const auto program = started();
    ASSERT_TRUE(program->impatient().trouble());
    write(file_, "[General]\ncommands=@ByteArray([1])\n");
    program->runLoop().advance(10);
    EXPECT_FALSE(program->impatient().trouble());
    program->impatient().setAside();
    EXPECT_EQ(program->bytes("commands"), "[1]") << "nothing is in the way any more";
}

TEST_F(PreferencesStart, aMillionKeysAreRefusedInNoTime) {
    write(file_, manyKeys(2'000'000));
    const auto start = std::chrono::steady_clock::now();
    const auto program = started();
    EXPECT_FALSE(program->boolean("dragToSnapEnabled"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2))
        << "without sanitizers a twentieth of that";
    EXPECT_TRUE(program->impatient().trouble());
}

TEST_F(PreferencesStart, aFileThatOthersCanReadIsMadePrivate) {
    write(file_, "[General]\ncommands=@ByteArray([1])\n");
    for (const auto& [before, after] : {std::pair{0644U, 0600U}, {0666U, 0600U}, {0444U, 0400U}}) {
        ASSERT_EQ(chmod(file_.c_str(), before), 0);
        EXPECT_EQ(started()->bytes("commands"), "[1]");
        EXPECT_EQ(static_cast<unsigned>(fs::status(file_).permissions()), after);
    }
}

TEST_F(PreferencesStart, whatAKilledProcessLeftIsCleared) {
    write(file_, "[General]\ncommands=@ByteArray([1])\n");
    for (const char* left : {".1.new", ".1.new.lock", ".2.new", ".17.new.AbCdEf"}) {
        write(file_.string() + left, "x");
    }
    write(file_.string() + ".lock", "");
    write(file_.string() + ".new", "somebody's own");
    const auto program = started();
    EXPECT_EQ(names().size(), 7U) << "the lock may be of a process that is writing";
    const fs::path lock = file_.string() + ".lock";
    fs::last_write_time(lock, fs::last_write_time(lock) - std::chrono::seconds(2));
    program->runLoop().advance(10);
    EXPECT_THAT(names(), ElementsAre("lumatile.conf", "lumatile.conf.new"));
    EXPECT_EQ(program->runLoop().timerCount(), 0U);
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(PreferencesStart, aStartLeavesNothingBehind) {
    fs::remove(file_.parent_path());
    EXPECT_FALSE(started()->bytes("commands"));
    EXPECT_FALSE(fs::exists(file_.parent_path()));
    EXPECT_THAT(log_.lines, IsEmpty());
}

}  // namespace
}  // namespace lumatile
