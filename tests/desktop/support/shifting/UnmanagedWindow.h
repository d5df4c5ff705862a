#pragma once

#include "tests/desktop/support/PixelRect.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// A window that shows itself past the window manager, as menus and tips do.
class UnmanagedWindow : public XClient {
public:
    UnmanagedWindow(const std::string& display, const PixelRect& area);

    xcb_window_t id() const { return window_; }

private:
    xcb_window_t window_;
};

}  // namespace lumatile::desktop
