#include "tests/desktop/support/kwin/WaylandClient.h"

#include <poll.h>
#include <wayland-client.h>

#include <algorithm>

#include "tests/desktop/support/Deadline.h"
#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

struct WaylandClient::Told {
    static void global(void* self, wl_registry* /*registry*/, std::uint32_t name,
                       const char* interface, std::uint32_t version) {
        static_cast<WaylandClient*>(self)->globals_[name] = {interface, version};
    }
    static void removed(void* self, wl_registry* /*registry*/, std::uint32_t name) {
        static_cast<WaylandClient*>(self)->globals_.erase(name);
    }
    static constexpr wl_registry_listener listener{global, removed};
};

WaylandClient::WaylandClient(const std::string& socket)
    : display_(wl_display_connect(socket.c_str())) {
    if (display_ == nullptr) {
        throw DesktopError("no compositor at " + socket);
    }
    registry_ = wl_display_get_registry(display_);
    wl_registry_add_listener(registry_, &Told::listener, this);
    roundTrip();
}

WaylandClient::~WaylandClient() {
    wl_registry_destroy(registry_);
    wl_display_disconnect(display_);
}

void WaylandClient::roundTrip() {
    if (wl_display_roundtrip(display_) < 0) {
        throw DesktopError("the compositor is gone");
    }
}

std::vector<WaylandClient::Global> WaylandClient::globals(std::string_view interface) const {
    std::vector<Global> result;
    for (const auto& [name, global] : globals_) {
        if (global.first == interface) {
            result.push_back({name, global.second});
        }
    }
    return result;
}

void* WaylandClient::bindOnly(const wl_interface& interface, std::uint32_t version) {
    const std::vector<Global> found = globals(interface.name);
    if (found.empty()) {
        throw DesktopError(std::string("the compositor has no ") + interface.name);
    }
    return bind(found.front(), interface, version);
}

void* WaylandClient::bind(const Global& global, const wl_interface& interface,
                          std::uint32_t version) {
    return wl_registry_bind(registry_, global.name, &interface, std::min(version, global.version));
}

bool WaylandClient::waitForEvents(const std::function<bool()>& condition) {
    const Deadline deadline = Deadline::usual();
    constexpr int longest = 1000;
    while (!condition()) {
        if (deadline.isOver()) {
            return false;
        }
        wl_display_flush(display_);
        while (wl_display_prepare_read(display_) != 0) {
            wl_display_dispatch_pending(display_);
        }
        if (condition()) {
            wl_display_cancel_read(display_);
            return true;
        }
        pollfd descriptor{wl_display_get_fd(display_), POLLIN, 0};
        if (poll(&descriptor, 1, deadline.milliseconds(longest)) > 0) {
            wl_display_read_events(display_);
        } else {
            wl_display_cancel_read(display_);
        }
        if (wl_display_dispatch_pending(display_) < 0) {
            throw DesktopError("the compositor is gone");
        }
    }
    return true;
}

}  // namespace lumatile::desktop
