#include "platform/freedesktop/process/StandardErrorLog.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <functional>
#include <string>

#include "tests/support/TemporaryFolder.h"

namespace lumatile {
namespace {

/// Lets standard error be something else for a while.
class OtherStandardError {
public:
    /// @param descriptor what standard error becomes; negative: closed
    explicit OtherStandardError(int descriptor) : former_(dup(STDERR_FILENO)) {
        if (descriptor >= 0) {
            dup2(descriptor, STDERR_FILENO);
        } else {
            close(STDERR_FILENO);
        }
    }
    OtherStandardError(const OtherStandardError&) = delete;
    OtherStandardError& operator=(const OtherStandardError&) = delete;
    ~OtherStandardError() {
        dup2(former_, STDERR_FILENO);
        close(former_);
    }

private:
    int former_;
};

/// Both ends of a channel that keeps the bounds of writes.
class Packets {
public:
    Packets() {
        EXPECT_EQ(
            socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends_.data()), 0);
    }
    Packets(const Packets&) = delete;
    Packets& operator=(const Packets&) = delete;
    ~Packets() {
        close(ends_[0]);
        close(ends_[1]);
    }

    int writeEnd() const { return ends_[1]; }

    /// What one write wrote, or "none".
    std::string next() const {
        std::string text(100000, '\0');
        const ssize_t count = recv(ends_[0], text.data(), text.size(), 0);
        text.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
        return count < 0 ? "none" : text;
    }

private:
    std::array<int, 2> ends_{};
};

TEST(StandardErrorLog, writesOneLineInOneWrite) {
    const Packets packets;
    {
        const OtherStandardError other(packets.writeEnd());
        StandardErrorLog log;
        log.write("MouseConductor", "failed to create event tap (Accessibility not granted?)");
        log.write("Preferences", std::string(10000, 'x'));
    }
    EXPECT_EQ(packets.next(),
              "MouseConductor: failed to create event tap (Accessibility not granted?)\n");
    EXPECT_EQ(packets.next(), "Preferences: " + std::string(10000, 'x') + "\n");
    EXPECT_EQ(packets.next(), "none");
}

TEST(StandardErrorLog, makesControlCharactersHarmless) {
    EXPECT_EQ(StandardErrorLog::line("A\nB", "one\ntwo\r\tthree"), "A?B: one?two??three\n");
    EXPECT_EQ(StandardErrorLog::line("T", "\x1b[2J\x07\x7f"), "T: ?[2J??\n");
    EXPECT_EQ(StandardErrorLog::line("T", std::string_view("\0x", 2)), "T: ?x\n");
    // The second set: U+009B begins a command to a terminal as the escape character does.
    EXPECT_EQ(StandardErrorLog::line("T",
                                     "a\xc2\x9b"
                                     "2J\xc2\x80\xc2\x9f."),
              "T: a?2J??.\n");
}

TEST(StandardErrorLog, leavesReadableTextAsItIs) {
    const std::string text = "Ctrl+Alt+Left — “größer” \xc2\xa0 \xc3\xa4 中 \xf0\x9f\x99\x82 \xc2";
    EXPECT_EQ(StandardErrorLog::line("Lumatile", text), "Lumatile: " + text + "\n");
    EXPECT_EQ(StandardErrorLog::line("", ""), ": \n");
}

TEST(StandardErrorLog, aClosedStandardErrorStaysNobodys) {
    const TemporaryFolder folder;
    const std::filesystem::path path = folder / "opened next";
    struct stat opened {};
    struct stat standardError {};
    {
        const OtherStandardError closed(-1);
        StandardErrorLog log;
        // What is opened next, the server's connection for one, must not be what the log writes to.
        const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        EXPECT_NE(file, STDERR_FILENO);
        log.write("Type", "lost");
        EXPECT_EQ(fstat(file, &opened), 0);
        EXPECT_EQ(fstat(STDERR_FILENO, &standardError), 0);
        close(file);
    }
    EXPECT_EQ(opened.st_size, 0);
    EXPECT_TRUE(S_ISCHR(standardError.st_mode));
}

TEST(StandardErrorLog, anOpenStandardErrorIsKept) {
    const Packets packets;
    const OtherStandardError other(packets.writeEnd());
    const StandardErrorLog log;
    struct stat mine {};
    struct stat theirs {};
    EXPECT_EQ(fstat(STDERR_FILENO, &mine), 0);
    EXPECT_EQ(fstat(packets.writeEnd(), &theirs), 0);
    EXPECT_EQ(mine.st_ino, theirs.st_ino);
}

TEST(StandardErrorLog, aReaderThatHasGoneDoesNotEndTheProcess) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    close(ends[0]);
    // As a program has it that never touched the signal; the test runner may ignore it.
    struct sigaction former {};
    struct sigaction usual {};
    usual.sa_handler = SIG_DFL;
    ASSERT_EQ(sigaction(SIGPIPE, &usual, &former), 0);
    {
        const OtherStandardError other(ends[1]);
        StandardErrorLog log;
        log.write("Type", "into nothing");
        log.write("Type", "into nothing");
    }
    sigset_t pending;
    ASSERT_EQ(sigpending(&pending), 0);
    EXPECT_EQ(sigismember(&pending, SIGPIPE), 0);
    ASSERT_EQ(sigaction(SIGPIPE, &former, nullptr), 0);
    close(ends[1]);
}

TEST(StandardErrorLog, aLineThatFoundNoRoomIsLostAndTheNextIsNot) {
    const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    ASSERT_GE(full, 0);
    const Packets packets;
    {
        const OtherStandardError other(full);
        StandardErrorLog log;
        log.write("Type", "no room");
        dup2(packets.writeEnd(), STDERR_FILENO);
        log.write("Type", "room");
    }
    EXPECT_EQ(packets.next(), "Type: room\n");
    EXPECT_EQ(packets.next(), "none");
    close(full);
}

}  // namespace
}  // namespace lumatile
