#pragma once

#include "geometry/Rect.h"

namespace lumatile {

/// What the script tells of a screen, in KWin's space: logical pixels, y downwards.
struct KWinScreen {
    Rect frame;
    Rect area;  ///< Less panels and docks, on the virtual desktop that is shown.

    bool operator==(const KWinScreen&) const = default;
};

}  // namespace lumatile
