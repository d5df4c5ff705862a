#pragma once

#include <cstdint>

#include "geometry/Rect.h"

namespace lumatile {

/// Landscape or portrait. The raw values are part of the stored forms.
enum class Orientation : std::uint8_t {
    horizontal = 0,  ///< Landscape; a square screen counts as landscape.
    vertical = 1,    ///< Portrait: strictly narrower than high.
};

/// The orientation of a screen, by its visible frame.
constexpr Orientation orientationOf(const Rect& visibleFrame) {
    return visibleFrame.width < visibleFrame.height ? Orientation::vertical
                                                    : Orientation::horizontal;
}

}  // namespace lumatile
