#pragma once

#include <cstdint>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

#include "platform/x11/X11Window.h"

namespace lumatile {

/// The windows that are known, what frames them, their order, and of which of them something is
/// stale. Asks the server nothing.
class X11WindowTable {
public:
    X11WindowTable() = default;
    X11WindowTable(const X11WindowTable&) = delete;
    X11WindowTable& operator=(const X11WindowTable&) = delete;
    ~X11WindowTable() = default;

    /// Null when there is no such window; also finds windows that are not managed for the moment.
    X11Window* find(xcb_window_t id);

    /// The managed windows, the topmost first.
    const std::vector<xcb_window_t>& stacking() const { return stacking_; }

    /// Makes these, and no others, the managed windows.
    /// @return those of them that were not known
    std::vector<xcb_window_t> manage(std::span<const xcb_window_t> topmostFirst);

    /// A new window, with a serial that none has had, and stale as a whole.
    X11Window& add(xcb_window_t id, X11WindowProperties::Mask properties);

    /// The window is gone.
    void forget(xcb_window_t id);

    bool isFrame(xcb_window_t topLevel) const { return framed_.contains(topLevel); }

    /// The topmost managed window in a frame; null when it frames none.
    X11Window* topmostIn(xcb_window_t topLevel);

    /// Calls `visit` with each window in a frame, be it its own.
    template <typename Visit>
    void eachIn(xcb_window_t topLevel, Visit visit) {
        const auto [first, last] = framed_.equal_range(topLevel);
        for (auto entry = first; entry != last; ++entry) {
            if (X11Window* client = find(entry->second)) {
                visit(*client);
            }
        }
    }

    /// Notes what frames a window.
    /// @return whether that is a frame in which no window was known before
    bool frame(X11Window& client, xcb_window_t topLevel);

    /// The frame is gone; what was in it is somewhere else, or gone too.
    void forgetFrame(xcb_window_t topLevel);

    /// To be called before anything of the window is marked as stale.
    X11Window& markStale(X11Window& window);

    bool isStale() const { return !stale_.empty(); }

    /// Those that something is stale of. They are on nobody's list from then on.
    std::vector<xcb_window_t> takeStale() { return std::exchange(stale_, {}); }

    bool isAnyTopLevelStale();

private:
    void takeOut(const X11Window& client);

    std::unordered_map<xcb_window_t, X11Window> windows_;
    std::unordered_multimap<xcb_window_t, xcb_window_t> framed_;  // Top level to clients.
    std::vector<xcb_window_t> stacking_;
    std::vector<xcb_window_t> stale_;
    std::uint64_t lastSerial_ = 0;
};

}  // namespace lumatile
