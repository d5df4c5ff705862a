#include "geometry/Grid.h"

#include "geometry/GridSize.h"

namespace lumatile {

Size Grid::cellSize(const Rect& frame, Orientation orientation) {
    const GridSize grid = GridSize::of(orientation);
    return {frame.width / static_cast<double>(grid.cols),
            frame.height / static_cast<double>(grid.rows)};
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
    const double rx = (rect.minX() - source.minX()) / source.width;
    const double ry = (rect.minY() - source.minY()) / source.height;
    const double rw = rect.width / source.width;
    const double rh = rect.height / source.height;
    return {target.minX() + rx * target.width, target.minY() + ry * target.height,
            rw * target.width, rh * target.height};
}

}  // namespace lumatile
