#pragma once

#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// Asks the window manager to make a window the active one, as a pager does, and waits until it is.
/// @throws DesktopError when it does not become active
void activateWindow(XClient& client, xcb_window_t window);

}  // namespace lumatile::desktop
