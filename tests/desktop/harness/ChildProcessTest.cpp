#include "tests/desktop/support/ChildProcess.h"

#include <gtest/gtest.h>
#include <signal.h>

#include "tests/support/TemporaryFolder.h"

namespace lumatile::desktop {
namespace {

ChildProcess shell(const std::string& script, const std::filesystem::path& output = {}) {
    ChildProcess::Start start;
    start.command = {"sh", "-c", script};
    start.environment = inheritedEnvironment();
    start.output = output;
    return ChildProcess(start);
}

TEST(ChildProcess, tellsTheStatusItEndedWith) {
    ChildProcess process = shell("exit 7");
    EXPECT_EQ(process.wait(Deadline::usual()), (ChildProcess::Exit{7, 0}));
    EXPECT_FALSE(process.isRunning());
}

TEST(ChildProcess, keepsTheOutput) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "log";
    ChildProcess process = shell("echo out; echo err >&2", file);
    process.wait(Deadline::usual());
    EXPECT_EQ(readFile(file), "out\nerr\n");
}

TEST(ChildProcess, endsWhenAsked) {
    ChildProcess process = shell("exec sleep 1000");
    ASSERT_TRUE(process.isRunning());
    EXPECT_EQ(process.stop(), (ChildProcess::Exit{std::nullopt, SIGTERM}));
    EXPECT_NE(kill(process.pid(), 0), 0);
}

TEST(ChildProcess, isEndedByForceWhenItDoesNotListen) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "log";
    ChildProcess process = shell("trap '' TERM; echo deaf; while :; do sleep 1000; done", file);
    while (readFile(file).empty()) {
        ASSERT_FALSE(process.wait(Deadline::in(std::chrono::milliseconds(5))));
    }
    EXPECT_EQ(process.stop(std::chrono::milliseconds(200)),
              (ChildProcess::Exit{std::nullopt, SIGKILL}));
}

TEST(ChildProcess, aProgramThatIsNotThereEndsWithStatus127) {
    ChildProcess::Start start;
    start.command = {"/nonexistent/program"};
    ChildProcess process(start);
    EXPECT_EQ(process.wait(Deadline::usual()), (ChildProcess::Exit{127, 0}));
}

}  // namespace
}  // namespace lumatile::desktop
