#pragma once

#include <functional>

#include "tests/desktop/support/PixelRect.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// Asks the window manager to put the outer frame of a window somewhere, as a pager does, and waits
/// until it is there.
/// @param accepts whether a frame is good enough, for windows that have a size rule of their own
/// @throws DesktopError when it does not get there
void placeWindow(XClient& client, xcb_window_t window, const PixelRect& wanted,
                 const std::function<bool(const PixelRect&)>& accepts);
void placeWindow(XClient& client, xcb_window_t window, const PixelRect& wanted);

}  // namespace lumatile::desktop
