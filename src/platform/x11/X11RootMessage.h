#pragma once

#include <array>
#include <cstdint>

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"

namespace lumatile {

/// Asks the window manager for something about a window. Nothing is waited for, and nothing tells
/// whether it listens.
void sendRootMessage(X11Connection& connection, xcb_window_t window, xcb_atom_t type,
                     const std::array<std::uint32_t, 5>& data);

}  // namespace lumatile
