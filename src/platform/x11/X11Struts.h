#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "geometry/Rect.h"

namespace lumatile {

/// The strips of the root window that one panel keeps for itself, in root coordinates: a depth from
/// each edge of the root, and the range along that edge in which it holds.
struct X11Strut {
    /// First and last pixel along the edge, both inside.
    struct Range {
        double first = 0;
        double last = 0;

        bool operator==(const Range&) const = default;
    };

    struct Side {
        double depth = 0;  ///< Pixels from the edge of the root; 0: none.
        Range range;       ///< Rows for the left and right side, columns for top and bottom.

        bool operator==(const Side&) const = default;
    };

    Side left;
    Side right;
    Side top;
    Side bottom;

    bool operator==(const X11Strut&) const = default;

    /// The value of `_NET_WM_STRUT_PARTIAL` (12 numbers) or `_NET_WM_STRUT` (4 numbers, each side
    /// along the whole edge).
    /// @return absent when there are not that many numbers
    static std::optional<X11Strut> decoded(std::span<const std::uint32_t> values);
};

/// What panels leave of a monitor; all in root coordinates. Depths count from the edges of the
/// root, so a panel on the far monitor reaches across the near one: a strip that would take the
/// whole monitor away is another monitor's and is left out, and so is a strip that does not fit the
/// root.
Rect monitorLessStruts(const Rect& monitor, const Size& root, std::span<const X11Strut> struts);

/// The part of a monitor inside the one work area of the desktop; the whole monitor where they do
/// not overlap.
Rect monitorInWorkArea(const Rect& monitor, const Rect& workArea);

/// The rectangle of one desktop in the value of `_NET_WORKAREA`; absent when the value is not a
/// list of rectangles that has one for `desktop`.
std::optional<Rect> workAreaOfDesktop(std::span<const std::uint32_t> values, std::uint32_t desktop);

}  // namespace lumatile
