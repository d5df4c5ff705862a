#include "settings_core/GridEditing.h"

#include <algorithm>
#include <vector>

#include "commands/BuiltInCommands.h"
#include "geometry/Grid.h"
#include "geometry/GridSize.h"

namespace lumatile {

GridCell GridEditing::clamp(const GridCell& cell, Orientation orientation) {
    const GridSize grid = GridSize::of(orientation);
    return {std::clamp<std::int64_t>(cell.col, 0, grid.cols - 1),
            std::clamp<std::int64_t>(cell.row, 0, grid.rows - 1)};
}

CellRect GridEditing::rect(const GridCell& from, const GridCell& to) {
    const auto [left, right] = std::minmax(from.col, to.col);
    const auto [top, bottom] = std::minmax(from.row, to.row);
    return {left, top, right - left + 1, bottom - top + 1};
}

Rect GridEditing::rect(const CellRect& cells, const Rect& area, Orientation orientation) {
    return Grid::rect(cells, area, orientation);
}

void GridEditing::setTarget(SnapCommand& command, const CellRect& rect) {
    command.targetSegments = {{rect.ox, rect.oy, rect.w, rect.h}};
}

void GridEditing::setActivation(SnapCommand& command, const CellRect& rect) {
    command.activationSegments = {{rect.ox, rect.oy, rect.w, rect.h}};
}

std::optional<SnapCommand> GridEditing::defaultOf(const SnapCommand& command) {
    const std::vector<SnapCommand> builtIn = BuiltInCommands::defaults();
    const auto found = std::find_if(builtIn.begin(), builtIn.end(), [&](const SnapCommand& each) {
        return each.nameKey == command.nameKey && each.axis == command.axis;
    });
    return found != builtIn.end() ? std::optional(*found) : std::nullopt;
}

}  // namespace lumatile
