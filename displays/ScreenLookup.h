#pragma once

#include <optional>

#include "displays/ScreenList.h"
#include "geometry/Point.h"
#include "geometry/Rect.h"

namespace lumatile {

/// The visible frame (accessibility space) of the first screen whose *whole* frame contains
/// `point`. Unlike `ScreenProviding::visibleFrameAt` a point on a panel finds its own screen, and a
/// point between two screens finds none.
std::optional<Rect> visibleFrameOfScreenContaining(ScreenList& list, const Point& point);

}  // namespace lumatile
