#pragma once

#include <optional>
#include <span>

#include "displays/ScreenList.h"
#include "geometry/Point.h"
#include "geometry/Rect.h"

namespace lumatile {

/// The visible frame (accessibility space) of the first screen whose *whole* frame contains
/// `point`. Unlike `ScreenProviding::visibleFrameAt` a point on a panel finds its own screen, and a
/// point between two screens finds none.
/// @param screens as a `ScreenList` tells them
std::optional<Rect> visibleFrameOfScreenContaining(std::span<const PlatformScreen> screens,
                                                   const Point& point);

/// The same among the screens that there are now.
std::optional<Rect> visibleFrameOfScreenContaining(ScreenList& list, const Point& point);

}  // namespace lumatile
