#include "platform/wayland/WaylandConnection.h"

#include <poll.h>
#include <wayland-client.h>

#include <algorithm>
#include <utility>

namespace lumatile {

struct WaylandConnection::Listeners {
    static constexpr wl_registry_listener registry = {
        .global =
            [](void* data, wl_registry* /*registry*/, std::uint32_t name, const char* interface,
               std::uint32_t version) {
                static_cast<WaylandConnection*>(data)->noteGlobal(name, interface, version);
            },
        .global_remove =
            [](void* data, wl_registry* /*registry*/, std::uint32_t name) {
                static_cast<WaylandConnection*>(data)->noteGone(name);
            },
    };
    static constexpr wl_callback_listener answer = {
        .done = [](void* data, wl_callback* /*callback*/,
                   std::uint32_t /*serial*/) { *static_cast<bool*>(data) = true; },
    };
};

std::unique_ptr<WaylandConnection> WaylandConnection::open(const std::string& displayName) {
    wl_display* const display =
        wl_display_connect(displayName.empty() ? nullptr : displayName.c_str());
    if (display == nullptr) {
        return nullptr;
    }
    std::unique_ptr<WaylandConnection> connection(new WaylandConnection(display));
    connection->synchronize();
    return connection->isLost() ? nullptr : std::move(connection);
}

WaylandConnection::WaylandConnection(wl_display* display)
    : display_(display), registry_(wl_display_get_registry(display)) {
    wl_registry_add_listener(registry_.get(), &Listeners::registry, this);
}

WaylandConnection::~WaylandConnection() {
    registry_.reset();
    wl_display_flush(display_);
    wl_display_disconnect(display_);
}

int WaylandConnection::fileDescriptor() const { return wl_display_get_fd(display_); }

void WaylandConnection::dispatch() {
    read(std::chrono::milliseconds::zero());
    // What the listeners have asked for.
    wl_display_flush(display_);
}

bool WaylandConnection::synchronize() {
    const Clock::time_point deadline = Clock::now() + longestRoundTrip;
    bool isAnswered = false;
    const WaylandHandle<wl_callback> callback(wl_display_sync(display_));
    wl_callback_add_listener(callback.get(), &Listeners::answer, &isAnswered);
    while (!isAnswered && !isLost()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        if (left <= std::chrono::milliseconds::zero()) {
            return false;
        }
        read(left);
    }
    return isAnswered;
}

bool WaylandConnection::isLost() const { return wl_display_get_error(display_) != 0; }

WaylandConnection::Subscription WaylandConnection::observeAppearing(
    GlobalObservers::Observer observer) {
    return appearing_.add(std::move(observer));
}

WaylandConnection::Subscription WaylandConnection::observeVanishing(
    GlobalObservers::Observer observer) {
    return vanishing_.add(std::move(observer));
}

const WaylandGlobal* WaylandConnection::first(const wl_interface& interface) const {
    const auto found = std::find_if(
        globals_.begin(), globals_.end(),
        [&](const WaylandGlobal& global) { return global.interface == interface.name; });
    return found != globals_.end() ? &*found : nullptr;
}

void* WaylandConnection::bound(const WaylandGlobal& global, const wl_interface& interface,
                               std::uint32_t atMost) {
    return wl_registry_bind(registry_.get(), global.name, &interface,
                            std::min(global.version, atMost));
}

/// Waits until something has arrived, or at most this long, and hands out what has.
void WaylandConnection::read(std::chrono::milliseconds longest) {
    // A listener may have left events that are read already.
    while (wl_display_prepare_read(display_) != 0) {
        if (wl_display_dispatch_pending(display_) < 0) {
            return;
        }
    }
    wl_display_flush(display_);
    pollfd descriptor{fileDescriptor(), POLLIN, 0};
    if (poll(&descriptor, 1, static_cast<int>(longest.count())) > 0) {
        wl_display_read_events(display_);
    } else {
        wl_display_cancel_read(display_);
    }
    wl_display_dispatch_pending(display_);
}

void WaylandConnection::noteGlobal(std::uint32_t name, std::string_view interface,
                                   std::uint32_t version) {
    const WaylandGlobal global{name, std::string(interface), version};
    globals_.push_back(global);
    appearing_.notify(global);
}

void WaylandConnection::noteGone(std::uint32_t name) {
    const auto found =
        std::find_if(globals_.begin(), globals_.end(),
                     [name](const WaylandGlobal& global) { return global.name == name; });
    if (found != globals_.end()) {
        const WaylandGlobal gone = std::move(*found);
        globals_.erase(found);
        vanishing_.notify(gone);
    }
}

}  // namespace lumatile
