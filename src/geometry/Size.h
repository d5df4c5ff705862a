#pragma once

namespace lumatile {

/// A width and a height in pixels.
struct Size {
    double width = 0;
    double height = 0;

    bool operator==(const Size&) const = default;
};

}  // namespace lumatile
