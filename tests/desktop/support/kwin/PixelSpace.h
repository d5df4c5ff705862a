#pragma once

#include "geometry/Rect.h"
#include "tests/desktop/support/PixelRect.h"

namespace lumatile::desktop {

/// The numbers that KWin has for a rectangle where one logical pixel is one of the screen.
inline Rect rectOf(const PixelRect& rect) {
    return {static_cast<double>(rect.x), static_cast<double>(rect.y),
            static_cast<double>(rect.width), static_cast<double>(rect.height)};
}

}  // namespace lumatile::desktop
