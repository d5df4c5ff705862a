#pragma once

#include <optional>

#include "geometry/Rect.h"

namespace lumatile {

/// A rectangle in whole pixels of the root window.
struct X11PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const X11PixelRect&) const = default;

    bool hasOriginOf(const X11PixelRect& other) const { return x == other.x && y == other.y; }
    bool hasSizeOf(const X11PixelRect& other) const {
        return width == other.width && height == other.height;
    }

    /// Whether the pixel lies in it.
    bool contains(int pixelX, int pixelY) const {
        return pixelX >= x && pixelX < x + width && pixelY >= y && pixelY < y + height;
    }

    Rect toRect() const;

    /// Largest distance of an edge from the root's origin, either sign, that is asked of the
    /// server, whose own coordinates have 16 bits.
    static constexpr double coordinateLimit = 32000;

    /// The whole-pixel rectangle whose edges lie nearest to those of `rect`, so that rectangles
    /// that meet still meet when each is rounded on its own.
    /// @return nothing for what is not finite, out of reach, or narrower than a pixel
    static std::optional<X11PixelRect> rounding(const Rect& rect);

    /// `value` rounded as an edge; nothing when it is not finite or out of reach.
    static std::optional<int> roundedEdge(double value);
};

}  // namespace lumatile
