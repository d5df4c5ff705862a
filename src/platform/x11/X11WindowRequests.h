#pragma once

#include <span>

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11WindowRequest.h"

namespace lumatile {

/// Sends requests about windows to the window manager.
class X11WindowRequests {
public:
    /// @param connection outlives this
    explicit X11WindowRequests(X11Connection& connection);

    /// On their way to the server when this returns.
    void send(xcb_window_t window, std::span<const X11WindowRequest> requests);

private:
    void send(xcb_window_t window, const X11StateRequest& request);
    void send(xcb_window_t window, const X11PlaceRequest& request);

    X11Connection& connection_;
    xcb_atom_t moveResize_;
    xcb_atom_t state_;
    xcb_atom_t maximizedHorizontally_;
    xcb_atom_t maximizedVertically_;
    xcb_atom_t shaded_;
};

}  // namespace lumatile
