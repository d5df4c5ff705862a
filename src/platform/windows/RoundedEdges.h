#pragma once

#include <optional>

#include "geometry/Rect.h"

namespace lumatile {

/// The whole number next to `value`, halves upwards.
/// @param farthest largest distance from 0, either sign, that a display system can be asked for
/// @return nothing when it is not finite or farther
std::optional<double> roundedEdge(double value, double farthest);

/// The rectangle whose edges are those of `rect`, each rounded, so that rectangles that meet still
/// meet when each is rounded on its own.
/// @return nothing for what is not finite, too far, or narrower than 1 then
std::optional<Rect> roundedEdges(const Rect& rect, double farthest);

}  // namespace lumatile
