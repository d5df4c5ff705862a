#pragma once

#include <optional>
#include <span>

#include "geometry/Rect.h"
#include "platform/wayland/WaylandOutputs.h"

namespace lumatile {

/// Where a surface has to lie so that a rectangle can be drawn on it to the pixel.
struct LayerPlace {
    WaylandOutput output;  ///< The screen whose scale counts.
    Rect surface;   ///< From the screen's upper left corner; whole numbers, round the rectangle.
    Rect panel;     ///< The rectangle, from the surface's corner.
    int width = 0;  ///< Of the surface in pixels of the screen.
    int height = 0;

    bool operator==(const LayerPlace&) const = default;
};

/// A surface's corners are whole numbers of the compositor's space, which on a screen of scale 1.5
/// are no whole pixels; then its picture would be blurred. So it is a little larger than the
/// rectangle, from whole pixels to whole pixels.
/// @param frame the compositor's space; rounded to where a window placed there would lie
/// @return absent without screens, and for a frame that no window could have (not finite, empty
/// once
///         rounded, or larger than all a screen can show)
std::optional<LayerPlace> layerPlace(const Rect& frame, std::span<const WaylandOutput> outputs);

}  // namespace lumatile
