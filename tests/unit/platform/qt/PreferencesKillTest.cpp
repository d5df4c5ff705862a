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
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/qt/QSettingsPreferences.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/unit/platform/qt/RecordedLog.h"

namespace lumatile {
namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::ElementsAre;
using testing::Eq;
using testing::IsEmpty;

/// Runs `work` in a process of its own that stands still before each of its system calls.
/// @param mayGoOn called then, with the number of calls made so far; false: the process is killed
/// @return whether it was killed; false when `work` came to its end
bool killed(const std::function<void()>& work, const std::function<bool(int)>& mayGoOn) {
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
        if (stops % 2 == 0 && !mayGoOn(stops / 2)) {
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
            return true;
        }
        ++stops;
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

    /// All that lies in the folder, names and contents.
    std::map<std::string, std::string> state() const {
        std::map<std::string, std::string> state;
        for (const auto& entry : fs::directory_iterator(file_.parent_path())) {
            state[entry.path().filename().string()] = contents(entry.path()).value_or("");
        }
        return state;
    }

    /// Follows a save from one system call to the next. Then kills one at each call before which
    /// the folder was another one than before the call before: killed in between, a process leaves
    /// nothing else.
    void killEverywhere(const std::optional<std::string>& before) {
        const Bytes value = R"([{"id":"A","axis":"horizontal"}])" + std::string(3000, 'x');
        RecordedLog log;
        const auto save = [&] {
            // Stored at the latest when it ends.
            QSettingsPreferences(log, runLoop_, file_.string()).setBytes("commands", value);
        };
        restore(before);
        save();
        const std::optional<std::string> after = contents(file_);
        ASSERT_TRUE(after);
        ASSERT_NE(after, before);

        restore(before);
        std::vector<int> places;
        std::map<std::string, std::string> former;
        int calls = 0;
        ASSERT_FALSE(killed(save, [&](int call) {
            EXPECT_THAT(contents(file_), AnyOf(Eq(before), Eq(after))) << "call " << call;
            const auto now = state();
            if (call == 0 || now != former) {
                places.push_back(call);
            }
            former = now;
            calls = call + 1;
            return true;
        }));
        // To lock, write a file, read it back, rename it and unlock changes the folder that often.
        EXPECT_GT(calls, 50);
        EXPECT_GT(places.size(), 6U);
        RecordProperty("calls", calls);
        RecordProperty("kills", static_cast<int>(places.size()));

        int olds = 0;
        int news = 0;
        for (const int place : places) {
            restore(before);
            ASSERT_TRUE(killed(save, [&](int call) { return call < place; }));
            const std::optional<std::string> found = contents(file_);
            ASSERT_THAT(found, AnyOf(Eq(before), Eq(after))) << "killed before call " << place;
            ++(found == after ? news : olds);

            makeOld(file_.string() + ".lock");
            // The next start clears away what was left behind, and no save is held up by it.
            QSettingsPreferences next(log, runLoop_, file_.string());
            for (const auto& [name, text] : state()) {
                ASSERT_EQ(name, file_.filename().string()) << "killed before call " << place;
            }
            next.setBoolean("dragToSnapEnabled", false);
            runLoop_.settle();
            ASSERT_EQ(next.boolean("dragToSnapEnabled"), false);
            ASSERT_EQ(next.bytes("commands"), found == after ? std::optional(value) : oldValue_);
            ASSERT_THAT(log.lines, IsEmpty()) << "killed before call " << place;
            ASSERT_THAT(std::vector<fs::path>(fs::directory_iterator(file_.parent_path()), {}),
                        ElementsAre(file_));
        }
        // On both sides of the step from one file to the other.
        EXPECT_GT(olds, 3);
        EXPECT_GT(news, 0);
    }

    SimulatedClock clock_;
    SimulatedRunLoop runLoop_{clock_};
    TemporaryFolder folder_;
    fs::path file_ = folder_ / "lumatile" / "lumatile.conf";
    std::optional<Bytes> oldValue_;
};

TEST_F(PreferencesKillTest, aSaveThatIsKilledAnywhereLeavesTheOldFileOrTheNewOne) {
    RecordedLog log;
    fs::create_directory(file_.parent_path());
    oldValue_ = "[1]";
    {
        QSettingsPreferences preferences(log, runLoop_, file_.string());
        preferences.setBytes("commands", *oldValue_);
        preferences.setBytes("oledSettings", "{}");
        preferences.setBytes("__ts", Bytes("\0\x80\xff)\n\"\\;", 8));
    }
    killEverywhere(contents(file_));
}

TEST_F(PreferencesKillTest, aFirstSaveThatIsKilledAnywhereLeavesNoFileOrTheNewOne) {
    killEverywhere(std::nullopt);
}

}  // namespace
}  // namespace lumatile
