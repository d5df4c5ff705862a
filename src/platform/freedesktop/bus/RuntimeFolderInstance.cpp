#include "platform/freedesktop/bus/RuntimeFolderInstance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <thread>
#include <utility>

#include "platform/freedesktop/bus/DisplayToken.h"

namespace lumatile {

namespace {

constexpr std::string_view request = "OpenSettings";
constexpr mode_t forTheUserAlone = 0600;

// Between the other one's lock and its socket lies next to nothing, but a busy machine may stop
// there.
constexpr int askAttempts = 20;
constexpr std::chrono::milliseconds askPause{50};

std::optional<sockaddr_un> addressOf(const std::string& path) {
    sockaddr_un address{};
    if (path.size() >= sizeof address.sun_path) {
        return std::nullopt;
    }
    address.sun_family = AF_UNIX;
    std::copy(path.begin(), path.end(), std::begin(address.sun_path));
    return address;
}

int newSocket() { return socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0); }

// The socket interface takes every kind of address through one base type.
const sockaddr* base(const sockaddr_un& address) {
    return reinterpret_cast<const sockaddr*>(&address);  // NOLINT(*-reinterpret-cast)
}

}  // namespace

RuntimeFolderInstance::RuntimeFolderInstance(std::string_view display) {
    const char* const folder = std::getenv("XDG_RUNTIME_DIR");
    if (folder != nullptr && *folder == '/') {
        stem_ = std::string(folder) + "/lumatile-" + displayToken(display);
    }
}

RuntimeFolderInstance::~RuntimeFolderInstance() {
    if (socket_ >= 0) {
        // The lock's file stays: taken away, it could be locked twice over.
        unlink((stem_ + ".socket").c_str());
        close(socket_);
    }
    if (lock_ >= 0) {
        close(lock_);
    }
}

InstanceClaim RuntimeFolderInstance::claim() {
    if (stem_.empty()) {
        return InstanceClaim::unavailable;
    }
    lock_ =
        open((stem_ + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, forTheUserAlone);
    if (lock_ < 0) {
        return InstanceClaim::unavailable;
    }
    if (flock(lock_, LOCK_EX | LOCK_NB) == 0) {
        listen();
        return InstanceClaim::first;
    }
    return errno == EWOULDBLOCK ? InstanceClaim::second : InstanceClaim::unavailable;
}

void RuntimeFolderInstance::listen() {
    const std::string path = stem_ + ".socket";
    const std::optional<sockaddr_un> address = addressOf(path);
    // Where the folder's name is too long for a socket, the lock alone keeps others away.
    if (!address) {
        return;
    }
    // Left by a program that was killed: the lock says that nobody listens.
    unlink(path.c_str());
    socket_ = newSocket();
    if (socket_ >= 0 && bind(socket_, base(*address), sizeof *address) != 0) {
        close(std::exchange(socket_, -1));
    }
}

bool RuntimeFolderInstance::ask() const {
    for (int attempt = 0; attempt < askAttempts; ++attempt) {
        if (attempt > 0) {
            std::this_thread::sleep_for(askPause);
        }
        if (askNow()) {
            return true;
        }
    }
    return false;
}

bool RuntimeFolderInstance::askNow() const {
    const std::optional<sockaddr_un> address = addressOf(stem_ + ".socket");
    const int descriptor = address ? newSocket() : -1;
    if (descriptor < 0) {
        return false;
    }
    const ssize_t sent = sendto(descriptor, request.data(), request.size(), MSG_NOSIGNAL,
                                base(*address), sizeof *address);
    close(descriptor);
    return sent == static_cast<ssize_t>(request.size());
}

bool RuntimeFolderInstance::consume() const {
    std::array<char, 64> text{};
    bool isAsked = false;
    for (;;) {
        const ssize_t count = recv(socket_, text.data(), text.size(), MSG_TRUNC);
        if (count < 0) {
            return isAsked;
        }
        isAsked = isAsked || std::string_view(text.data(),
                                              std::min<std::size_t>(static_cast<std::size_t>(count),
                                                                    text.size())) == request;
    }
}

}  // namespace lumatile
