#pragma once

#include <optional>

#include "geometry/Point.h"
#include "geometry/Size.h"

namespace lumatile {

/// What is to become of a window's outer frame, accessibility space. What is absent is not asked
/// for: without a size the window is moved and never resized, without a position its corner stays.
struct PlacingWish {
    std::optional<Point> position;
    std::optional<Size> size;

    bool isEmpty() const { return !position && !size; }

    /// Both wishes in one; what both ask for is as `later` has it.
    PlacingWish followedBy(const PlacingWish& later) const {
        return {later.position ? later.position : position, later.size ? later.size : size};
    }
};

}  // namespace lumatile
