#include "platform/windows/RoundedEdges.h"

#include <cmath>

namespace lumatile {

std::optional<double> roundedEdge(double value, double farthest) {
    const double edge = std::floor(value + 0.5);
    // Also false for what is not a number.
    return std::abs(edge) <= farthest ? std::optional(edge) : std::nullopt;
}

std::optional<Rect> roundedEdges(const Rect& rect, double farthest) {
    // A negative extent is no size that a window could take, although it spans a rectangle.
    if (!(rect.width >= 0) || !(rect.height >= 0)) {
        return std::nullopt;
    }
    const auto left = roundedEdge(rect.x, farthest);
    const auto top = roundedEdge(rect.y, farthest);
    const auto right = roundedEdge(rect.x + rect.width, farthest);
    const auto bottom = roundedEdge(rect.y + rect.height, farthest);
    if (!left || !top || !right || !bottom || *right <= *left || *bottom <= *top) {
        return std::nullopt;
    }
    return Rect{*left, *top, *right - *left, *bottom - *top};
}

}  // namespace lumatile
