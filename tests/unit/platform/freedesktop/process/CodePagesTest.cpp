#include "platform/freedesktop/process/CodePages.h"

#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>

namespace lumatile {
namespace {

/// Kibibytes of files that are mapped and in this process's memory.
long residentFilePages() {
    std::ifstream status("/proc/self/status");
    const std::string label = "RssFile:";
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(label)) {
            return std::stol(line.substr(label.size()));
        }
    }
    return -1;
}

TEST(CodePages, whatIsNotRunAgainLeavesTheMemory) {
    const long before = residentFilePages();
    EXPECT_GT(CodePages::release(), 0U);
    const long after = residentFilePages();
    ASSERT_GT(after, 0);
    EXPECT_LT(after, before / 2);
}

TEST(CodePages, theProgramRunsOn) {
    for (int round = 0; round < 3; ++round) {
        CodePages::release();
        EXPECT_EQ(std::to_string(round) + "!",
                  std::string(1, static_cast<char>('0' + round)) + "!");
        EXPECT_THROW(static_cast<void>(std::string().at(1)), std::out_of_range);
    }
}

TEST(CodePages, breakpointsOfADebuggerStay) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const bool isTraced = ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0;
        _exit(isTraced && CodePages::release() == 0 ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS) << status;
}

}  // namespace
}  // namespace lumatile
