#pragma once

#include <cstdint>
#include <span>
#include <unordered_set>
#include <vector>

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Struts.h"

namespace lumatile {

/// The struts of the windows that are shown, and the events after which they may be others.
class X11ReservedRoom {
public:
    /// @param connection outlives this
    explicit X11ReservedRoom(X11Connection& connection);

    /// Asks the given windows and watches them from then on; those of earlier calls count no
    /// longer. One round trip, however many windows there are, and one more for each frame round a
    /// window that states a strut.
    std::vector<X11Strut> read(std::span<const std::uint32_t> windows);

    /// Whether an event that has been read says that the last answer may no longer hold.
    bool isStale() const { return isStale_; }

private:
    struct Level;
    struct WindowQuestion;
    struct Statement;

    void note(const xcb_generic_event_t& event);
    void noteShown(xcb_window_t window);
    std::vector<Statement> statements(std::span<const std::uint32_t> windows);
    Level askLevel(xcb_window_t window, std::uint32_t events);
    void climb(std::vector<Statement>& statements);

    X11Connection& connection_;
    xcb_atom_t partial_;
    xcb_atom_t plain_;
    std::unordered_set<xcb_window_t> watched_;  // Those asked about.
    std::unordered_set<xcb_window_t> keepers_;  // Those of them with struts, and their frames.
    bool isStale_ = false;
    X11Connection::Subscription subscription_;  // Last: its observer names the fields above.
};

}  // namespace lumatile
