#include "platform/x11/X11PixelRect.h"

#include "platform/windows/RoundedEdges.h"

namespace lumatile {

Rect X11PixelRect::toRect() const {
    return {static_cast<double>(x), static_cast<double>(y), static_cast<double>(width),
            static_cast<double>(height)};
}

std::optional<int> X11PixelRect::roundedEdge(double value) {
    const auto edge = lumatile::roundedEdge(value, coordinateLimit);
    return edge ? std::optional(static_cast<int>(*edge)) : std::nullopt;
}

std::optional<X11PixelRect> X11PixelRect::rounding(const Rect& rect) {
    const auto rounded = roundedEdges(rect, coordinateLimit);
    if (!rounded) {
        return std::nullopt;
    }
    return X11PixelRect{static_cast<int>(rounded->x), static_cast<int>(rounded->y),
                        static_cast<int>(rounded->width), static_cast<int>(rounded->height)};
}

}  // namespace lumatile
