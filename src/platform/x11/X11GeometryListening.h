#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11WindowTable.h"

namespace lumatile {

/// Which windows the server tells of. A window that moves on and on while nobody asks for its
/// place, as one does that the user drags, would wake the program up for each step: its geometry
/// is not listened to until somebody reads.
class X11GeometryListening {
public:
    /// Both outlive this.
    X11GeometryListening(X11Connection& connection, X11WindowTable& table)
        : connection_(connection), table_(table) {}
    X11GeometryListening(const X11GeometryListening&) = delete;
    X11GeometryListening& operator=(const X11GeometryListening&) = delete;
    ~X11GeometryListening() = default;

    void listenToClient(xcb_window_t client);

    /// For frames that are no client themselves, or are to be heard as such too.
    void listenToFrame(xcb_window_t topLevel);

    /// The geometry of a window has changed: that of its frame, or its own.
    void noteEvent(X11Window& client);

    /// Somebody reads now.
    void noteReading() { ++reading_; }

    /// Windows of which something may have been missed; who takes them listens to them again.
    bool isAnyUnheard() const { return !unheard_.empty(); }
    std::vector<xcb_window_t> takeUnheard() { return std::exchange(unheard_, {}); }

    /// Whether a window that was not listened to is still the one that it was: the events that are
    /// selected on a window go with it, and another one may have taken its id.
    static bool isSame(const xcb_get_window_attributes_reply_t& attributes);

private:
    void select(xcb_window_t window, std::uint32_t mask);
    void stopListening(X11Window& client);

    X11Connection& connection_;
    X11WindowTable& table_;
    std::vector<xcb_window_t> unheard_;
    std::uint64_t reading_ = 0;
};

}  // namespace lumatile
