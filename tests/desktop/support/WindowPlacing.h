#pragma once

#include "tests/desktop/support/PixelRect.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// Asks the window manager to put the outer frame of a window somewhere, as a pager does, and waits
/// until it is there.
/// @param cornerOnly whether the size may become another one, for windows with a rule of their own
/// @throws DesktopError when it does not get there
void placeWindow(XClient& client, xcb_window_t window, const PixelRect& frame, bool cornerOnly);

}  // namespace lumatile::desktop
