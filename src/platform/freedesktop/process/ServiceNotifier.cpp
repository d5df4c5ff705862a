#include "platform/freedesktop/process/ServiceNotifier.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace lumatile {

ServiceNotifier::ServiceNotifier() {
    const char* address = std::getenv("NOTIFY_SOCKET");
    if (address != nullptr) {
        address_ = address;
    }
}

void ServiceNotifier::send(std::string_view state) const {
    sockaddr_un target{};
    // Only paths and abstract names ("@…") are addresses of local sockets.
    if (address_.empty() || (address_.front() != '/' && address_.front() != '@') ||
        address_.size() >= sizeof(target.sun_path)) {
        return;
    }
    target.sun_family = AF_UNIX;
    std::copy(address_.begin(), address_.end(), std::begin(target.sun_path));
    if (address_.front() == '@') {
        target.sun_path[0] = '\0';
    }
    const int descriptor = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor < 0) {
        return;
    }
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + address_.size());
    // The socket interface takes every kind of address through one base type.
    sendto(descriptor, state.data(), state.size(), MSG_NOSIGNAL,
           reinterpret_cast<const sockaddr*>(&target), length);  // NOLINT(*-reinterpret-cast)
    close(descriptor);
}

}  // namespace lumatile
