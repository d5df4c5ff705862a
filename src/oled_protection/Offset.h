#pragma once

namespace lumatile {

/// A displacement in pixels; positive is to the right and downwards.
struct Offset {
    double dx = 0;
    double dy = 0;

    bool operator==(const Offset&) const = default;
};

}  // namespace lumatile
