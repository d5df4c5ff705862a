#pragma once

namespace lumatile {

/// Widths in pixels on the four sides of a window, in the order of the window properties.
struct X11Extents {
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;

    bool operator==(const X11Extents&) const = default;
};

}  // namespace lumatile
