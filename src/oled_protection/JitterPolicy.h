#pragma once

#include "geometry/Rect.h"
#include "oled_protection/Offset.h"

namespace lumatile {

/// Moves the inner edges of windows by an offset that all windows share during one time slot, so
/// that a seam between two windows does not rest on the same pixels all day. Edges on the border of
/// the display stay, so no gap opens there and nothing spills off the screen.
struct JitterPolicy {
    double tolerancePx = 0;     ///< Pixels an edge may go either way; none unless positive.
    double stepSeconds = 3600;  ///< Seconds that a slot lasts; no shift unless positive.

    bool operator==(const JitterPolicy&) const = default;

    /// The slot's offset in whole pixels. It depends on the clock alone, so every process agrees on
    /// it and nothing is stored. A tolerance that is no whole number is exceeded by the rounding.
    /// @param time seconds since 1970-01-01 00:00 UTC
    /// @return zero where a value that is not finite leaves no slot to speak of
    Offset offset(double time) const;

    /// `frame` with its inner edges shifted by the slot's offset and trimmed to `area`. Edges
    /// within 0.5 px of the border of `area` stay; a frame that sticks out by more moves whole. An
    /// axis on which nothing happens keeps its numbers bit for bit, one that only moves keeps its
    /// size so. All rectangles are in the same space.
    /// @return `frame` itself when the shift would leave nothing of it
    Rect adjust(const Rect& frame, const Rect& area, double time) const;

    /// The shift that `adjust` applied: that of the min edges or, where they stayed, of the max
    /// edges.
    static Offset edgeShift(const Rect& unadjusted, const Rect& adjusted);
};

}  // namespace lumatile
