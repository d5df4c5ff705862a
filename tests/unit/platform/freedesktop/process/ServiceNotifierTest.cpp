#include "platform/freedesktop/process/ServiceNotifier.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>

#include "tests/support/TemporaryFolder.h"

namespace lumatile {
namespace {

/// The socket of a service manager. A name that begins with "@" is an abstract one.
class Manager {
public:
    explicit Manager(std::string name)
        : name_(std::move(name)),
          descriptor_(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::copy(name_.begin(), name_.end(), std::begin(address.sun_path));
        if (name_.front() == '@') {
            address.sun_path[0] = '\0';
        }
        const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name_.size());
        EXPECT_EQ(bind(descriptor_, reinterpret_cast<const sockaddr*>(&address), length), 0);
    }
    Manager(const Manager&) = delete;
    Manager& operator=(const Manager&) = delete;
    ~Manager() { close(descriptor_); }

    /// The next message, or "none".
    std::string next() const {
        std::array<char, 64> text{};
        const ssize_t count = recv(descriptor_, text.data(), text.size(), 0);
        return count < 0 ? "none" : std::string(text.data(), static_cast<std::size_t>(count));
    }

private:
    std::string name_;
    int descriptor_;
};

std::ptrdiff_t openDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

class ServiceNotifierTest : public testing::Test {
protected:
    void TearDown() override { unsetenv("NOTIFY_SOCKET"); }

    /// Of an abstract socket: those are shared by all that runs on the machine.
    static std::string unusedName(const std::string& start) {
        return start + "lumatile-notify-" + std::to_string(getpid());
    }
};

TEST_F(ServiceNotifierTest, tellsASocketInTheFileSystem) {
    const TemporaryFolder folder;
    const std::string name = (folder / "notify").string();
    const Manager manager(name);
    setenv("NOTIFY_SOCKET", name.c_str(), 1);
    const ServiceNotifier notifier;
    EXPECT_EQ(manager.next(), "none");
    notifier.ready();
    EXPECT_EQ(manager.next(), "READY=1");
    notifier.stopping();
    EXPECT_EQ(manager.next(), "STOPPING=1");
    EXPECT_EQ(manager.next(), "none");
}

TEST_F(ServiceNotifierTest, tellsAnAbstractSocket) {
    const std::string name = unusedName("@");
    const Manager manager(name);
    setenv("NOTIFY_SOCKET", name.c_str(), 1);
    ServiceNotifier().ready();
    EXPECT_EQ(manager.next(), "READY=1");
}

TEST_F(ServiceNotifierTest, namesAsLongAsTheyMayBeWork) {
    constexpr std::size_t longest = sizeof(sockaddr_un::sun_path) - 1;
    std::string name = unusedName("@");
    name.resize(longest, 'x');
    const Manager manager(name);
    setenv("NOTIFY_SOCKET", name.c_str(), 1);
    ServiceNotifier().ready();
    EXPECT_EQ(manager.next(), "READY=1");
}

TEST_F(ServiceNotifierTest, isSilentWhereNobodyListens) {
    const std::ptrdiff_t before = openDescriptors();
    unsetenv("NOTIFY_SOCKET");
    ServiceNotifier().ready();
    for (const std::string& name :
         {std::string(), std::string("/nowhere/at/all"), std::string("relative"), std::string("@"),
          unusedName("@nobody"), "/" + std::string(5000, 'x')}) {
        setenv("NOTIFY_SOCKET", name.c_str(), 1);
        const ServiceNotifier notifier;
        notifier.ready();
        notifier.stopping();
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(ServiceNotifierTest, aManagerThatDoesNotReadIsNotWaitedFor) {
    const std::string name = unusedName("@full");
    const Manager manager(name);
    setenv("NOTIFY_SOCKET", name.c_str(), 1);
    const ServiceNotifier notifier;
    for (int i = 0; i < 10000; ++i) {  // More than any queue holds.
        notifier.ready();
    }
    EXPECT_EQ(manager.next(), "READY=1");
}

}  // namespace
}  // namespace lumatile
