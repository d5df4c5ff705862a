#pragma once

#include <string>
#include <vector>

#include "tests/desktop/support/PixelRect.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// The rectangles that a user saw a window take, as the server's geometry events of the window and
/// of the root's child that it is in tell.
class OuterRectangles : public XClient {
public:
    /// @throws DesktopError when the window is gone
    OuterRectangles(const std::string& display, xcb_window_t window);

    /// Begins anew at what the window is now.
    void forget();

    /// The different rectangles that the window took since then, the first of them where it was.
    const std::vector<PixelRect>& outer();

    /// The different sizes of the client since then as rectangles at 0, 0, the first of them what
    /// it had.
    const std::vector<PixelRect>& clientSizes();

protected:
    void handle(const xcb_generic_event_t& event) override;

private:
    PixelRect geometryOf(xcb_window_t window);

    xcb_window_t window_;
    xcb_window_t topLevel_;
    // How far the edges of what is seen lie inside those of the root's child: more than nothing
    // where a window draws a shadow of its own. The same before and after in a window that keeps
    // its decoration.
    PixelRect inset_;
    std::vector<PixelRect> outer_;
    std::vector<PixelRect> clientSizes_;
};

/// For messages of tests: one after the other.
std::string toString(const std::vector<PixelRect>& rects);

}  // namespace lumatile::desktop
