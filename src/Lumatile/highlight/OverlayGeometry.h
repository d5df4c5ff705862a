#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "geometry/Rect.h"

namespace lumatile {

/// A screen as the toolkit has it: the origin is a pixel of the window system's root, the size is
/// in points, of which each has `scale` pixels. A place on the screen is that origin plus a
/// distance in points.
struct ToolkitScreen {
    Rect frame;
    double scale = 1;
};

/// Where the toolkit has to put a window so that a rectangle of pixels can be drawn in it.
struct OverlayPlace {
    std::size_t screen = 0;  ///< Index of the screen whose scale counts.
    Rect window;  ///< Toolkit space, whole numbers: the smallest that holds the rectangle.
    Rect panel;   ///< The rectangle in points, inside the window.

    bool operator==(const OverlayPlace&) const = default;
};

/// The one conversion from the accessibility space to the toolkit's. A toolkit's windows lie on
/// whole points, which at a scale of 1.5 are no whole pixels: so the window is up to two pixels
/// larger, and the panel inside it is exact.
/// @param frame accessibility space; rounded to the pixels on which a window placed there would lie
/// @param screens the primary one first: its origin is the accessibility space's, wherever on the
///        root that is
/// @return absent without screens, and for a frame that no window could have (not finite, empty
///         once rounded, or beyond the window system's 16 bits)
std::optional<OverlayPlace> overlayPlace(const Rect& frame, std::span<const ToolkitScreen> screens);

}  // namespace lumatile
