#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/ObserverList.h"
#include "platform/wayland/WaylandHandle.h"

struct wl_display;
struct wl_interface;

namespace lumatile {

/// Something that the compositor offers, as long as it is in the list of its globals.
struct WaylandGlobal {
    std::uint32_t name = 0;  ///< The compositor's number for it; a later one may have the same.
    std::string interface;
    std::uint32_t version = 0;
};

/// The program's own connection to the compositor, apart from the toolkit's. Events are handed to
/// the listeners of the objects that they belong to while `dispatch` or `synchronize` runs.
class WaylandConnection {
public:
    using GlobalObservers = ObserverList<const WaylandGlobal&>;
    using Subscription = GlobalObservers::Subscription;
    using Clock = std::chrono::steady_clock;

    /// The longest that a round trip is waited for.
    static constexpr std::chrono::milliseconds longestRoundTrip{250};

    /// What the compositor offers is known where it answered within `longestRoundTrip`, and comes
    /// later otherwise.
    /// @param displayName as in $WAYLAND_DISPLAY; empty: the value of $WAYLAND_DISPLAY
    /// @return nothing when there is no such compositor
    static std::unique_ptr<WaylandConnection> open(const std::string& displayName = {});

    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;

    /// What was asked for before is sent, as far as the compositor takes it at once.
    ~WaylandConnection();

    wl_display* get() const { return display_; }

    /// For the run loop: readable when the compositor has sent something.
    int fileDescriptor() const;

    /// Reads what has arrived, hands it to the listeners, and sends what is asked for. Never waits.
    /// To be called when the descriptor is readable and before the run loop blocks.
    void dispatch();

    /// One round trip, after which the listeners have had every event up to now.
    /// @return false when the compositor did not answer within `longestRoundTrip`
    bool synchronize();

    /// True once the compositor is gone or has refused something; nothing works from then on.
    bool isLost() const;

    /// What the compositor offers now, in the order in which it came.
    const std::vector<WaylandGlobal>& globals() const { return globals_; }

    /// `observer` sees each global that appears from now on.
    Subscription observeAppearing(GlobalObservers::Observer observer);

    /// `observer` sees each global that goes from now on; it is no longer among `globals` then.
    Subscription observeVanishing(GlobalObservers::Observer observer);

    /// @param atMost the highest version that is understood
    /// @return an object for this global
    template <class Object>
    WaylandHandle<Object> bind(const WaylandGlobal& global, const wl_interface& interface,
                               std::uint32_t atMost) {
        return WaylandHandle<Object>(static_cast<Object*>(bound(global, interface, atMost)));
    }

    /// @return an object for the first global of this interface; nothing where there is none
    template <class Object>
    WaylandHandle<Object> bindFirst(const wl_interface& interface, std::uint32_t atMost) {
        const WaylandGlobal* const global = first(interface);
        return global != nullptr ? bind<Object>(*global, interface, atMost) : nullptr;
    }

    /// The same for objects that are given back in a way of their own.
    template <class Object>
    Object* bindRaw(const WaylandGlobal& global, const wl_interface& interface,
                    std::uint32_t atMost) {
        return static_cast<Object*>(bound(global, interface, atMost));
    }

private:
    struct Listeners;

    explicit WaylandConnection(wl_display* display);

    const WaylandGlobal* first(const wl_interface& interface) const;
    void* bound(const WaylandGlobal& global, const wl_interface& interface, std::uint32_t atMost);
    void read(std::chrono::milliseconds longest);
    void noteGlobal(std::uint32_t name, std::string_view interface, std::uint32_t version);
    void noteGone(std::uint32_t name);

    wl_display* display_;
    std::vector<WaylandGlobal> globals_;
    GlobalObservers appearing_;
    GlobalObservers vanishing_;
    WaylandHandle<wl_registry> registry_;
};

}  // namespace lumatile
