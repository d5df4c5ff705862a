#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "platform/qt/QSettingsPreferences.h"

namespace lumatile {
namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::ElementsAre;
using testing::Eq;
using testing::IsEmpty;

class RecordedLog final : public SystemLog {
public:
    void write(std::string_view type, std::string_view message) override {
        lines.push_back(std::string(type) + ": " + std::string(message));
    }

    std::vector<std::string> lines;
};

/// Runs `work` in a process of its own that is killed when it is about to make a system call.
/// @param calls how many it makes before
/// @return whether it was killed; false when `work` ended with fewer calls
bool killedAfter(int calls, const std::function<void()>& work) {
    const pid_t child = fork();
    if (child < 0) {
        throw std::runtime_error("fork");
    }
    if (child == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
            _exit(EXIT_FAILURE);
        }
        raise(SIGSTOP);
        work();
        _exit(EXIT_SUCCESS);
    }
    int status = 0;
    const auto isStopped = [&] {
        return waitpid(child, &status, 0) == child && WIFSTOPPED(status);
    };
    // It stops by itself, and from then on when it begins a call and when it ends it.
    if (!isStopped() ||
        ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_EXITKILL | PTRACE_O_TRACESYSGOOD) != 0) {
        throw std::runtime_error("the process cannot be followed");
    }
    constexpr int syscallStop = SIGTRAP | 0x80;
    int stops = 0;
    while (ptrace(PTRACE_SYSCALL, child, nullptr, nullptr) == 0 && isStopped()) {
        if (WSTOPSIG(status) != syscallStop) {
            throw std::runtime_error("an unexpected signal");
        }
        if (stops++ == 2 * calls) {
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
            return true;
        }
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != EXIT_SUCCESS) {
        throw std::runtime_error("the process ended in another way");
    }
    return false;
}

std::optional<std::string> contents(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(file), {});
}

class PreferencesKillTest : public testing::Test {
protected:
    PreferencesKillTest() {
        std::string name = (fs::temp_directory_path() / "lumatile-kill-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no folder");
        }
        folder_ = name;
        file_ = folder_ / "lumatile" / "lumatile.conf";
    }
    ~PreferencesKillTest() override { fs::remove_all(folder_); }

    /// Puts the file back to what it was, and nothing beside it.
    void restore(const std::optional<std::string>& text) {
        fs::remove_all(file_.parent_path());
        fs::create_directory(file_.parent_path());
        if (text) {
            std::ofstream(file_, std::ios::binary) << *text;
        }
    }

    /// As a program finds it that is started some seconds later.
    static void makeOld(const fs::path& path) {
        std::error_code error;
        const auto time = fs::last_write_time(path, error);
        if (!error) {
            fs::last_write_time(path, time - std::chrono::seconds(5));
        }
    }

    /// Saves a value again and again, killed each time one system call later, until it comes
    /// through.
    void killEverywhere(const std::optional<std::string>& before) {
        const Bytes value = R"([{"id":"A","axis":"horizontal"}])" + std::string(3000, 'x');
        RecordedLog log;
        const auto save = [&] {
            QSettingsPreferences(log, file_.string()).setBytes("commands", value);
        };
        restore(before);
        save();
        const std::optional<std::string> after = contents(file_);
        ASSERT_TRUE(after);
        ASSERT_NE(after, before);
        int olds = 0;
        int news = 0;
        for (int calls = 0;; ++calls) {
            restore(before);
            const bool wasKilled = killedAfter(calls, save);
            const std::optional<std::string> found = contents(file_);
            ASSERT_THAT(found, AnyOf(Eq(before), Eq(after)))
                << "killed after " << calls << " calls";
            ASSERT_TRUE(wasKilled || found == after);
            ++(found == after ? news : olds);

            makeOld(file_.string() + ".lock");
            // The next save is not held up by what was left behind, and clears it away.
            QSettingsPreferences next(log, file_.string());
            next.setBoolean("dragToSnapEnabled", false);
            ASSERT_EQ(next.boolean("dragToSnapEnabled"), false);
            ASSERT_EQ(next.bytes("commands"), found == after ? std::optional(value) : oldValue_);
            ASSERT_THAT(log.lines, IsEmpty()) << "killed after " << calls << " calls";
            ASSERT_THAT(std::vector<fs::path>(fs::directory_iterator(file_.parent_path()), {}),
                        ElementsAre(file_));
            if (!wasKilled) {
                break;
            }
        }
        // It was stopped on both sides of the step from one file to the other, and not just at the
        // ends: to write a file, read it back and rename it takes tens of calls.
        EXPECT_GT(olds, 20);
        EXPECT_GT(news, 1);
        RecordProperty("calls", olds + news);
    }

    fs::path folder_;
    fs::path file_;
    std::optional<Bytes> oldValue_;
};

TEST_F(PreferencesKillTest, aSaveThatIsKilledAnywhereLeavesTheOldFileOrTheNewOne) {
    RecordedLog log;
    fs::create_directory(file_.parent_path());
    oldValue_ = "[1]";
    QSettingsPreferences preferences(log, file_.string());
    preferences.setBytes("commands", *oldValue_);
    preferences.setBytes("oledSettings", "{}");
    preferences.setBytes("__ts", Bytes("\0\x80\xff)\n\"\\;", 8));
    killEverywhere(contents(file_));
}

TEST_F(PreferencesKillTest, aFirstSaveThatIsKilledAnywhereLeavesNoFileOrTheNewOne) {
    killEverywhere(std::nullopt);
}

}  // namespace
}  // namespace lumatile
