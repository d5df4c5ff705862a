#pragma once

#include "geometry/Orientation.h"
#include "geometry/Rect.h"

namespace lumatile {

/// The screen that a window is dragged over.
struct ScreenContext {
    Rect visibleFrame;  ///< Accessibility space.
    Orientation orientation = Orientation::horizontal;

    /// The orientation is the frame's.
    static ScreenContext of(const Rect& visibleFrame) {
        return {visibleFrame, orientationOf(visibleFrame)};
    }

    bool operator==(const ScreenContext&) const = default;
};

}  // namespace lumatile
