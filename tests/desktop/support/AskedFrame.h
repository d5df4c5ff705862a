#pragma once

#include <optional>

#include "tests/desktop/support/DesktopObserver.h"
#include "tests/desktop/support/PixelRect.h"

namespace lumatile::desktop {

/// The outer frame that the window manager was asked for since the observer's last `forget`: the
/// messages of a window, each overriding what the ones before said about the same edge.
/// @return absent when nothing was asked; fields that no message named keep the values of `now`
std::optional<PixelRect> askedFrame(DesktopObserver& observer, xcb_window_t window,
                                    const PixelRect& now);

}  // namespace lumatile::desktop
