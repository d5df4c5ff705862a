#pragma once

#include <optional>

#include "geometry/Point.h"
#include "geometry/Rect.h"
#include "platform/kwin/KWinOrder.h"
#include "platform/kwin/KWinWindow.h"
#include "windows/PlacingWish.h"

namespace lumatile {

/// How a wish is to be carried out in KWin's whole logical pixels: a function of what is known of
/// the window and of nothing else.
struct KWinPlacing {
    Rect frame;   ///< What was asked for, unrounded, KWin's space.
    Rect target;  ///< The same in whole pixels; edges are rounded, never sizes.
    bool withSize = false;
    bool isSo = false;  ///< Nothing is left to ask for.

    /// What is to be read of the window: what was last written, unrounded, for as long as KWin
    /// still has what became of that; else KWin's own. KWin's space.
    static Rect frameOf(const KWinWindow& window);

    /// @param origin of the accessibility space in KWin's
    /// @return nothing when it cannot be asked for: full screen, not movable, rolled up and
    ///         to be moved only, no number, out of
    ///         reach, narrower than a pixel
    static std::optional<KWinPlacing> plan(const KWinWindow& window, const PlacingWish& wish,
                                           const Point& origin);

    KWinPlaceOrder order(const KWinWindow& window) const;

    /// What is to be read of a window that has yet to answer, once it is there.
    KWinWrittenFrame expectation() const { return {frame, target}; }

    /// What is to be read of the window from now on: for each number that was met the unrounded
    /// one, KWin's for the others.
    KWinWrittenFrame outcome(const KWinWindow& window) const;
};

}  // namespace lumatile
