#pragma once

#include <string>

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"

namespace lumatile {

/// What a window manager calls itself; empty when it does not say, or says something that is no
/// plain text.
/// @param checkWindow the window by which it states itself
std::string windowManagerName(X11Connection& connection, xcb_window_t checkWindow);

}  // namespace lumatile
