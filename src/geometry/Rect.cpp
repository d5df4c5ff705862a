#include "geometry/Rect.h"

#include <algorithm>
#include <cmath>

namespace lumatile {

double Rect::minX() const { return std::min(x, x + width); }
double Rect::minY() const { return std::min(y, y + height); }
double Rect::maxX() const { return std::max(x, x + width); }
double Rect::maxY() const { return std::max(y, y + height); }
double Rect::midX() const { return x + width * 0.5; }
double Rect::midY() const { return y + height * 0.5; }

Point Rect::origin() const { return {x, y}; }
Size Rect::size() const { return {width, height}; }
Point Rect::center() const { return {midX(), midY()}; }

bool Rect::contains(const Point& point) const {
    return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY();
}

bool Rect::contains(const Rect& other) const {
    return other.minX() >= minX() && other.maxX() <= maxX() && other.minY() >= minY() &&
           other.maxY() <= maxY();
}

Rect Rect::enclosing(const Rect& other) const {
    const double left = std::min(minX(), other.minX());
    const double top = std::min(minY(), other.minY());
    return {left, top, std::max(maxX(), other.maxX()) - left, std::max(maxY(), other.maxY()) - top};
}

Rect Rect::intersection(const Rect& other) const {
    const double left = std::max(minX(), other.minX());
    const double top = std::max(minY(), other.minY());
    const double right = std::min(maxX(), other.maxX());
    const double bottom = std::min(maxY(), other.maxY());
    return {left, top, std::max(0.0, right - left), std::max(0.0, bottom - top)};
}

Rect Rect::grownBy(double margin) const {
    return {minX() - margin, minY() - margin, maxX() - minX() + 2 * margin,
            maxY() - minY() + 2 * margin};
}

Rect Rect::offsetBy(double dx, double dy) const { return {x + dx, y + dy, width, height}; }

bool Rect::isWithin(double tolerance, const Rect& other) const {
    return std::abs(x - other.x) <= tolerance && std::abs(y - other.y) <= tolerance &&
           std::abs(width - other.width) <= tolerance &&
           std::abs(height - other.height) <= tolerance;
}

}  // namespace lumatile
