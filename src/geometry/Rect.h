#pragma once

#include "geometry/Point.h"
#include "geometry/Size.h"

namespace lumatile {

/// A rectangle in pixels, unrounded. The coordinate space is the caller's.
/// Edges are the standardised ones: a negative width or height spans the same rectangle as its
/// mirror image, so `minX() <= maxX()` always holds for finite values.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const Rect&) const = default;

    double minX() const;
    double minY() const;
    double maxX() const;
    double maxY() const;
    double midX() const;
    double midY() const;

    Point origin() const;
    Size size() const;
    Point center() const;

    /// Half-open: the min edges are inside, the max edges are outside, so that a point on the seam
    /// of two rectangles belongs to exactly one of them.
    bool contains(const Point& point) const;

    /// True when `other` lies inside this rectangle; shared edges count as inside.
    bool contains(const Rect& other) const;

    /// The smallest rectangle that encloses both.
    Rect enclosing(const Rect& other) const;

    /// The common part; a rectangle of zero width or height where they do not overlap.
    Rect intersection(const Rect& other) const;

    /// Grown by `margin` pixels on every side (shrunk where negative).
    Rect grownBy(double margin) const;

    /// Moved by (dx, dy), size unchanged.
    Rect offsetBy(double dx, double dy) const;

    /// True when x, y, width and height each differ by at most `tolerance` pixels.
    bool isWithin(double tolerance, const Rect& other) const;
};

}  // namespace lumatile
