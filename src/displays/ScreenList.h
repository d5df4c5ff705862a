#pragma once

#include <vector>

#include "geometry/Point.h"
#include "geometry/Rect.h"

namespace lumatile {

/// A screen in the platform's space: origin at the bottom-left corner of the primary screen, y
/// upwards, so `frame.y` is the screen's lower edge.
struct PlatformScreen {
    Rect frame;         ///< The whole screen.
    Rect visibleFrame;  ///< The screen less panels and docks.

    bool operator==(const PlatformScreen&) const = default;
};

/// Port: the screens that are connected now.
class ScreenList {
public:
    virtual ~ScreenList() = default;

    /// Every screen, the primary one first, in the platform's order. Empty when there is none.
    virtual std::vector<PlatformScreen> screens() = 0;

    /// The primary screen's top-left corner, y downwards, in the arrangement in which screens and
    /// windows stay as they are when another screen becomes the primary one: where the
    /// accessibility space begins there.
    virtual Point origin() = 0;
};

}  // namespace lumatile
