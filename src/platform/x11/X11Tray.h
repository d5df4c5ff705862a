#pragma once

#include <functional>

#include <xcb/xcb.h>

#include "base/Lifeline.h"
#include "platform/x11/X11Connection.h"

namespace lumatile {

/// The system tray of the screen, the older kind, into which programs put small windows.
class X11Tray {
public:
    /// @param connection outlives this
    /// @param appeared runs, deferred, when a tray says that it is there from now on
    X11Tray(X11Connection& connection, std::function<void()> appeared);
    X11Tray(const X11Tray&) = delete;
    X11Tray& operator=(const X11Tray&) = delete;
    ~X11Tray() = default;

    /// One round trip.
    bool isPresent() const;

private:
    void note(const xcb_generic_event_t& event);

    X11Connection& connection_;
    std::function<void()> appeared_;
    xcb_atom_t selection_;
    xcb_atom_t manager_;
    X11Connection::Subscription subscription_;
    Lifeline lifeline_;  // For deferred work, which may still be waiting when this is gone.
};

}  // namespace lumatile
