#pragma once

#include <string>

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"

namespace lumatile {

/// The selection that a manager of the connection's screen owns for as long as it manages.
/// @param prefix "WM_S" for the window manager, "_NET_WM_CM_S" for the compositor
/// @return `XCB_ATOM_NONE` when the connection is lost
xcb_atom_t managerSelection(const X11Connection& connection, const std::string& prefix);

}  // namespace lumatile
