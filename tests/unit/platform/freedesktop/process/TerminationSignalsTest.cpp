#include "platform/freedesktop/process/TerminationSignals.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>

namespace lumatile {
namespace {

bool isReadable(int descriptor) {
    pollfd watched{descriptor, POLLIN, 0};
    return poll(&watched, 1, 0) == 1 && (watched.revents & POLLIN) != 0;
}

class TerminationSignalsTest : public testing::TestWithParam<int> {};

TEST_P(TerminationSignalsTest, areReadInsteadOfEndingTheProcess) {
    TerminationSignals signals;
    EXPECT_FALSE(isReadable(signals.fileDescriptor()));
    EXPECT_FALSE(signals.consume());
    for (int round = 0; round < 2; ++round) {
        kill(getpid(), GetParam());
        EXPECT_TRUE(isReadable(signals.fileDescriptor()));
        EXPECT_TRUE(signals.consume());
        EXPECT_FALSE(isReadable(signals.fileDescriptor()));
        EXPECT_FALSE(signals.consume());
    }
}

TEST_P(TerminationSignalsTest, thatComeAgainWhileTheProcessEndsDoNotKillIt) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        {
            const TerminationSignals signals;
            kill(getpid(), GetParam());
        }
        _exit(42);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 42);
}

TEST_P(TerminationSignalsTest, haveTheirFormerEffectAfterwards) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        { const TerminationSignals signals; }
        kill(getpid(), GetParam());
        _exit(42);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Signals, TerminationSignalsTest, testing::Values(SIGTERM, SIGINT, SIGHUP));

TEST(TerminationSignals, severalAtOnceAreTakenTogether) {
    TerminationSignals signals;
    kill(getpid(), SIGTERM);
    kill(getpid(), SIGHUP);
    kill(getpid(), SIGINT);
    EXPECT_TRUE(signals.consume());
    EXPECT_FALSE(signals.consume());
}

TEST(TerminationSignals, otherSignalsAreNotTouched) {
    const TerminationSignals signals;
    sigset_t blocked;
    ASSERT_EQ(pthread_sigmask(SIG_BLOCK, nullptr, &blocked), 0);
    for (const int signal : {SIGUSR1, SIGCHLD, SIGPIPE, SIGSEGV, SIGTSTP}) {
        EXPECT_EQ(sigismember(&blocked, signal), 0) << signal;
    }
    EXPECT_EQ(sigismember(&blocked, SIGTERM), 1);
}

}  // namespace
}  // namespace lumatile
