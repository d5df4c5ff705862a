#include "platform/freedesktop/bus/RuntimeFolderInstance.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "tests/support/TemporaryFolder.h"

namespace lumatile {
namespace {

bool isReadable(int descriptor) {
    pollfd one{descriptor, POLLIN, 0};
    return poll(&one, 1, 0) == 1;
}

/// A run-time folder that the environment names for as long as the test runs.
class RuntimeFolderInstanceTest : public testing::Test {
protected:
    RuntimeFolderInstanceTest() { setenv("XDG_RUNTIME_DIR", folder_.path().c_str(), 1); }
    void TearDown() override { unsetenv("XDG_RUNTIME_DIR"); }

    void send(const std::string& text) const {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::string path = (folder_ / "lumatile-display_3a7.socket").string();
        std::copy(path.begin(), path.end(), std::begin(address.sun_path));
        const int descriptor = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        EXPECT_EQ(sendto(descriptor, text.data(), text.size(), 0,
                         reinterpret_cast<const sockaddr*>(&address), sizeof address),
                  static_cast<ssize_t>(text.size()));
        close(descriptor);
    }

    TemporaryFolder folder_;
};

TEST_F(RuntimeFolderInstanceTest, theSecondAsksTheFirst) {
    RuntimeFolderInstance first(":7");
    ASSERT_EQ(first.claim(), InstanceClaim::first);
    EXPECT_FALSE(isReadable(first.fileDescriptor()));
    EXPECT_FALSE(first.consume());
    RuntimeFolderInstance second(":7");
    EXPECT_EQ(second.claim(), InstanceClaim::second);
    EXPECT_EQ(second.fileDescriptor(), -1);
    EXPECT_FALSE(isReadable(first.fileDescriptor()));
    EXPECT_TRUE(second.ask());
    EXPECT_TRUE(isReadable(first.fileDescriptor()));
    EXPECT_TRUE(first.consume());
    EXPECT_FALSE(first.consume());
}

TEST_F(RuntimeFolderInstanceTest, desktopsSideBySideDoNotMeet) {
    RuntimeFolderInstance one(":7");
    RuntimeFolderInstance other(":8");
    EXPECT_EQ(one.claim(), InstanceClaim::first);
    EXPECT_EQ(other.claim(), InstanceClaim::first);
    EXPECT_FALSE(one.consume());
}

TEST_F(RuntimeFolderInstanceTest, afterTheFirstHasEndedTheNextOneIsFirst) {
    {
        RuntimeFolderInstance first(":7");
        EXPECT_EQ(first.claim(), InstanceClaim::first);
    }
    RuntimeFolderInstance next(":7");
    EXPECT_EQ(next.claim(), InstanceClaim::first);
}

TEST_F(RuntimeFolderInstanceTest, aSocketThatAKilledProgramLeftIsNoHindrance) {
    std::optional<RuntimeFolderInstance> first;
    first.emplace(":7");
    ASSERT_EQ(first->claim(), InstanceClaim::first);
    const std::string socketPath = (folder_ / "lumatile-display_3a7.socket").string();
    std::filesystem::rename(socketPath, socketPath + ".kept");
    first.reset();
    std::filesystem::rename(socketPath + ".kept", socketPath);
    RuntimeFolderInstance next(":7");
    EXPECT_EQ(next.claim(), InstanceClaim::first);
    RuntimeFolderInstance second(":7");
    EXPECT_EQ(second.claim(), InstanceClaim::second);
    EXPECT_TRUE(second.ask());
    EXPECT_TRUE(next.consume());
}

TEST_F(RuntimeFolderInstanceTest, anotherThatHoldsTheLockAndDoesNotListenIsUnreachable) {
    RuntimeFolderInstance first(":7");
    ASSERT_EQ(first.claim(), InstanceClaim::first);
    std::filesystem::remove(folder_ / "lumatile-display_3a7.socket");
    RuntimeFolderInstance second(":7");
    EXPECT_EQ(second.claim(), InstanceClaim::second);
    EXPECT_FALSE(second.ask());
}

TEST_F(RuntimeFolderInstanceTest, otherWordsAreIgnored) {
    RuntimeFolderInstance first(":7");
    ASSERT_EQ(first.claim(), InstanceClaim::first);
    send("");
    send("OpenSetting");
    send("OpenSettings ");
    send(std::string(100'000, 'O'));
    EXPECT_FALSE(first.consume());
    send("Quit");
    send("OpenSettings");
    EXPECT_TRUE(first.consume());
}

TEST_F(RuntimeFolderInstanceTest, withoutAFolderThereIsNoPlaceToMeet) {
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(RuntimeFolderInstance(":7").claim(), InstanceClaim::unavailable);
    setenv("XDG_RUNTIME_DIR", (folder_ / "missing").c_str(), 1);
    EXPECT_EQ(RuntimeFolderInstance(":7").claim(), InstanceClaim::unavailable);
}

TEST_F(RuntimeFolderInstanceTest, whereTheNameIsTooLongForASocketTheLockHolds) {
    setenv("XDG_RUNTIME_DIR", (folder_ / std::string(200, 'x')).c_str(), 1);
    std::filesystem::create_directory(folder_ / std::string(200, 'x'));
    RuntimeFolderInstance first(":7");
    EXPECT_EQ(first.claim(), InstanceClaim::first);
    EXPECT_EQ(first.fileDescriptor(), -1);
    RuntimeFolderInstance second(":7");
    EXPECT_EQ(second.claim(), InstanceClaim::second);
    EXPECT_FALSE(second.ask());
}

}  // namespace
}  // namespace lumatile
