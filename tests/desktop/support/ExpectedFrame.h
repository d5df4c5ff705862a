#pragma once

#include "geometry/Rect.h"
#include "tests/desktop/support/DefaultShortcuts.h"
#include "tests/desktop/support/MonitorLayout.h"
#include "tests/desktop/support/PixelRect.h"

namespace lumatile::desktop {

/// Where windows should end up on a layout of monitors: the rules as a user could check them with a
/// ruler, in root coordinates and whole pixels.
class ExpectedFrame {
public:
    explicit ExpectedFrame(MonitorLayout layout);

    /// A panel takes `height` pixels at the lower edge of the monitor.
    void reserve(std::size_t monitor, int height);

    /// The monitor less its panel.
    PixelRect visible(std::size_t monitor) const;

    /// Of an area command on the monitor; its portrait twin where the visible frame stands upright.
    PixelRect area(const DefaultShortcut& shortcut, std::size_t monitor) const;
    /// The same, unrounded and in the space that starts at the primary monitor's corner.
    Rect unroundedArea(const DefaultShortcut& shortcut, std::size_t monitor) const;

    /// The middle of the monitor for a window of this size.
    PixelRect centered(const PixelRect& window, std::size_t monitor) const;

    /// The place on `to` that the window has on `from`.
    PixelRect moved(const PixelRect& window, std::size_t from, std::size_t to) const;

    /// Between root coordinates and the space that starts at the primary monitor's corner.
    Rect fromRoot(const PixelRect& rect) const;
    /// Rounded on its edges, so that neighbours meet.
    PixelRect toRoot(const Rect& rect) const;

private:
    MonitorLayout layout_;
    std::vector<int> reserved_;
};

}  // namespace lumatile::desktop
