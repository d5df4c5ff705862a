#pragma once

namespace lumatile {

/// A position in pixels. The coordinate space is the caller's; everywhere outside `displays/` it is
/// the accessibility space: origin at the top-left corner of the primary screen, y downwards.
struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

}  // namespace lumatile
