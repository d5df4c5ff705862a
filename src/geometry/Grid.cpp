#include "geometry/Grid.h"

#include <cmath>

#include "geometry/GridSize.h"

namespace lumatile {

Size Grid::cellSize(const Rect& frame, Orientation orientation) {
    const GridSize grid = GridSize::of(orientation);
    return {std::abs(frame.width) / static_cast<double>(grid.cols),
            std::abs(frame.height) / static_cast<double>(grid.rows)};
}

Rect Grid::rect(const CellRect& cell, const Rect& frame, Orientation orientation) {
    const Size size = cellSize(frame, orientation);
    return {frame.minX() + size.width * static_cast<double>(cell.ox),
            frame.minY() + size.height * static_cast<double>(cell.oy),
            size.width * static_cast<double>(cell.w), size.height * static_cast<double>(cell.h)};
}

Rect Grid::rect(const Area& area, const Rect& frame, Orientation orientation) {
    if (area.segments.empty()) {
        return {};
    }
    Rect result = rect(area.segments.front(), frame, orientation);
    for (std::size_t i = 1; i < area.segments.size(); ++i) {
        result = result.enclosing(rect(area.segments[i], frame, orientation));
    }
    return result;
}

bool Grid::contains(const Point& point, const Area& area, const Rect& frame,
                    Orientation orientation) {
    for (const CellRect& cell : area.segments) {
        if (rect(cell, frame, orientation).contains(point)) {
            return true;
        }
    }
    return false;
}

Rect Grid::centered(const Size& size, const Rect& frame) {
    return {frame.midX() - size.width * 0.5, frame.midY() - size.height * 0.5, size.width,
            size.height};
}

Rect Grid::transferred(const Rect& rect, const Rect& source, const Rect& target) {
    const double sourceWidth = std::abs(source.width);
    const double sourceHeight = std::abs(source.height);
    const double rx = (rect.minX() - source.minX()) / sourceWidth;
    const double ry = (rect.minY() - source.minY()) / sourceHeight;
    const double rw = std::abs(rect.width) / sourceWidth;
    const double rh = std::abs(rect.height) / sourceHeight;
    const double targetWidth = std::abs(target.width);
    const double targetHeight = std::abs(target.height);
    return {target.minX() + rx * targetWidth, target.minY() + ry * targetHeight, rw * targetWidth,
            rh * targetHeight};
}

}  // namespace lumatile
