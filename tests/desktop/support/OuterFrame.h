#pragma once

#include <optional>

#include "tests/desktop/support/PixelRect.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// The rectangle of a top-level window that a user sees, asked from the server at this moment: the
/// client with the window manager's frame round it, less the shadow that the client draws itself.
/// @return absent when there is no such window
std::optional<PixelRect> outerFrame(XClient& client, xcb_window_t window);

/// The client window alone, in root coordinates.
std::optional<PixelRect> clientArea(XClient& client, xcb_window_t window);

}  // namespace lumatile::desktop
