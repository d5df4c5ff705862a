#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

struct wl_display;
struct wl_interface;
struct wl_registry;

namespace lumatile::desktop {

/// A connection of the test's own to a private compositor, independent of the program's.
class WaylandClient {
public:
    /// @param socket the path of the compositor's socket
    /// @throws DesktopError when no compositor answers there
    explicit WaylandClient(const std::string& socket);
    WaylandClient(const WaylandClient&) = delete;
    WaylandClient& operator=(const WaylandClient&) = delete;
    virtual ~WaylandClient();

    /// Returns when the compositor has seen everything asked on this connection before, and handles
    /// the events that came until then.
    /// @throws DesktopError when the compositor is gone, or refuses this client
    void roundTrip();

protected:
    wl_display* display() { return display_; }
    wl_registry* registry() { return registry_; }

    struct Global {
        std::uint32_t name = 0;
        std::uint32_t version = 0;
    };
    /// Those of this interface that are there now, oldest first.
    std::vector<Global> globals(std::string_view interface) const;

    /// The one object of this interface.
    /// @param version the newest that is known here
    /// @throws DesktopError when the compositor has none
    void* bindOnly(const wl_interface& interface, std::uint32_t version);
    void* bind(const Global& global, const wl_interface& interface, std::uint32_t version);

    /// Handles events until `condition` holds.
    /// @return false when it does not hold in time
    bool waitForEvents(const std::function<bool()>& condition);

private:
    struct Told;

    wl_display* display_ = nullptr;
    wl_registry* registry_ = nullptr;
    std::map<std::uint32_t, std::pair<std::string, std::uint32_t>> globals_;
};

}  // namespace lumatile::desktop
