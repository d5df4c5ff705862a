#pragma once

#include "geometry/Rect.h"

namespace lumatile {

/// A rectangle of the platform's screen space (origin bottom-left of the primary screen, y upwards)
/// in the accessibility space (origin top-left of the same screen, y downwards).
/// @param primaryHeight height of the primary screen's full frame, about which the axis flips
Rect flippedFromPlatformSpace(const Rect& rect, double primaryHeight);

}  // namespace lumatile
