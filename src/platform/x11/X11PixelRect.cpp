#include "platform/x11/X11PixelRect.h"

#include <cmath>

namespace lumatile {

Rect X11PixelRect::toRect() const {
    return {static_cast<double>(x), static_cast<double>(y), static_cast<double>(width),
            static_cast<double>(height)};
}

std::optional<int> X11PixelRect::roundedEdge(double value) {
    const double edge = std::floor(value + 0.5);
    // Also false for what is not a number.
    if (!(std::abs(edge) <= coordinateLimit)) {
        return std::nullopt;
    }
    return static_cast<int>(edge);
}

std::optional<X11PixelRect> X11PixelRect::rounding(const Rect& rect) {
    // A negative extent is no size that a window could take, although it spans a rectangle.
    if (!(rect.width >= 0) || !(rect.height >= 0)) {
        return std::nullopt;
    }
    const auto left = roundedEdge(rect.x);
    const auto top = roundedEdge(rect.y);
    const auto right = roundedEdge(rect.x + rect.width);
    const auto bottom = roundedEdge(rect.y + rect.height);
    if (!left || !top || !right || !bottom || *right <= *left || *bottom <= *top) {
        return std::nullopt;
    }
    return X11PixelRect{*left, *top, *right - *left, *bottom - *top};
}

}  // namespace lumatile
