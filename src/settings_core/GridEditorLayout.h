#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "commands/SnapCommand.h"
#include "geometry/CellRect.h"
#include "geometry/GridSize.h"
#include "geometry/Orientation.h"
#include "geometry/Point.h"
#include "geometry/Rect.h"
#include "geometry/Size.h"
#include "settings_core/GridCell.h"

namespace lumatile {

/// How a cell of the grid editor is filled, so that an area reads as a small window.
enum class GridCellFill : std::uint8_t { empty, titleBar, frame, interior };

/// Where the cells of the grid editor are. All in the view's own space, y down, in points.
struct GridEditorLayout {
    GridSize grid;
    double pitch = 0;  ///< From one cell to the next, whole points; 0 where there is no room.
    Point origin;      ///< Top left of the first cell's share, whole points.

    /// The grid of `orientation` as large as whole points allow, in the middle of `size`.
    static GridEditorLayout of(const Size& size, Orientation orientation);

    Rect cells() const;  ///< What all cells take together, with the gaps at the border.

    double gap() const;           ///< Between two cells.
    double cornerRadius() const;  ///< Of a cell.

    /// What is drawn of a cell. Of negative size where there is no room for it.
    Rect cell(const GridCell& cell) const;

    /// The cell under a point, perhaps one outside the grid; absent where the grid has no room.
    std::optional<GridCell> cellAt(const Point& point) const;

    /// @param area the first area of the command, absent when it has none that can be used
    static GridCellFill fill(const GridCell& cell, const std::optional<CellRect>& area);

    /// The area of `command` that the editor shows: its first one, if that is whole.
    static std::optional<CellRect> shownArea(const SnapCommand& command);

    /// What a screen reader says of the editor.
    static std::string label(const SnapCommand& command);
};

}  // namespace lumatile
