#pragma once

#include <optional>
#include <vector>

#include "geometry/Point.h"
#include "geometry/Rect.h"
#include "platform/x11/X11PlacingOrder.h"
#include "platform/x11/X11Window.h"
#include "platform/x11/X11WindowRequest.h"
#include "windows/PlacingWish.h"

namespace lumatile {

/// How a wish is to be carried out: a function of what is known of the window and of nothing else.
struct X11PlacingPlan {
    X11PlacingOrder order;
    std::vector<X11WindowRequest> requests;  ///< In their order; none where it is so already.
};

/// Makes out what the window manager is to be asked for.
struct X11PlacingPlanner {
    /// @param outer the window's outer rectangle on the root
    /// @param origin of the accessibility space, on the root
    /// @return the frame in the accessibility space: what was last written, unrounded, for as long
    ///         as the server still has what became of that; else the server's whole pixels
    static Rect frame(const X11Window& window, const X11PixelRect& outer, const Point& origin);

    /// @param origin of the accessibility space, on the root
    /// @return nothing when it cannot be asked for: full screen, no number, out of the server's
    ///         reach, narrower than a pixel
    static std::optional<X11PlacingPlan> plan(const X11Window& window, const PlacingWish& wish,
                                              const Point& origin);

    /// What takes a window out of the tile that its window manager put it into at a drop.
    static std::vector<X11WindowRequest> untiling(const X11Window& window);
};

}  // namespace lumatile
