#pragma once

#include <string>
#include <vector>

#include "tests/desktop/support/PixelRect.h"

namespace lumatile::desktop {

/// The monitors of a private desktop as data, in the server's order.
struct MonitorLayout {
    std::string name;
    std::vector<PixelRect> monitors;  ///< In root coordinates.
    std::size_t primary = 0;          ///< Index of the primary monitor.
    /// Device pixels per pixel of the layout, of each monitor; empty: 1 for all. For sessions that
    /// have such monitors.
    std::vector<double> scales{};

    bool operator==(const MonitorLayout&) const = default;

    const PixelRect& primaryMonitor() const { return monitors.at(primary); }

    /// The smallest root that holds all monitors, at least the root's origin included.
    PixelRect root() const;

    static MonitorLayout landscape();       ///< One monitor, 1920 × 1080.
    static MonitorLayout smallLandscape();  ///< One monitor, 1366 × 768: thirds do not divide it.
    static MonitorLayout portrait();        ///< One monitor, 1080 × 1920.

    /// Landscape, primary, with a portrait monitor on its right.
    static MonitorLayout landscapeAndPortrait();

    /// The same with the landscape monitor scaled: 1.5 × 1280 × 720.
    static MonitorLayout scaledLandscapeAndPortrait();

    /// Portrait at the root's origin and the primary landscape monitor on its right and lower: the
    /// primary corner is not the root's.
    static MonitorLayout portraitAndPrimaryLandscape();
};

}  // namespace lumatile::desktop
