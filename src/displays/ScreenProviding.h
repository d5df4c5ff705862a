#pragma once

#include <optional>
#include <vector>

#include "geometry/Point.h"
#include "geometry/Rect.h"

namespace lumatile {

/// Where windows may go: the visible frames of the screens, in the accessibility space.
class ScreenProviding {
public:
    virtual ~ScreenProviding() = default;

    /// The visible frame of every screen, the primary one first, in the platform's order.
    virtual std::vector<Rect> screens() const = 0;

    /// The visible frame that contains `point` (half-open), else that of the first screen, so that
    /// a point on a panel still has one. Absent only when there are no screens.
    virtual std::optional<Rect> visibleFrameAt(const Point& point) const = 0;
};

}  // namespace lumatile
