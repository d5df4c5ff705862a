#include "settings_core/GridEditorLayout.h"

#include <algorithm>
#include <cmath>

#include "commands/Segment.h"
#include "settings_core/SettingsCoreTexts.h"

namespace lumatile {

namespace {

constexpr double gapShare = 0.14;
constexpr double leastGap = 2;
constexpr double cornerShare = 0.2;

}  // namespace

GridEditorLayout GridEditorLayout::of(const Size& size, Orientation orientation) {
    GridEditorLayout layout;
    layout.grid = GridSize::of(orientation);
    const auto columns = static_cast<double>(layout.grid.cols);
    const auto rows = static_cast<double>(layout.grid.rows);
    layout.pitch = std::floor(std::min(size.width / columns, size.height / rows));
    layout.origin = {std::floor((size.width - columns * layout.pitch) / 2),
                     std::floor((size.height - rows * layout.pitch) / 2)};
    return layout;
}

Rect GridEditorLayout::cells() const {
    return {origin.x, origin.y, pitch * static_cast<double>(grid.cols),
            pitch * static_cast<double>(grid.rows)};
}

double GridEditorLayout::gap() const { return std::max(std::round(pitch * gapShare), leastGap); }

double GridEditorLayout::cornerRadius() const { return (pitch - gap()) * cornerShare; }

Rect GridEditorLayout::cell(const GridCell& cell) const {
    const double side = pitch - gap();
    return {origin.x + pitch * static_cast<double>(cell.col) + gap() / 2,
            origin.y + pitch * static_cast<double>(cell.row) + gap() / 2, side, side};
}

std::optional<GridCell> GridEditorLayout::cellAt(const Point& point) const {
    if (pitch <= 0) {
        return std::nullopt;
    }
    return GridCell{static_cast<std::int64_t>(std::floor((point.x - origin.x) / pitch)),
                    static_cast<std::int64_t>(std::floor((point.y - origin.y) / pitch))};
}

GridCellFill GridEditorLayout::fill(const GridCell& cell, const std::optional<CellRect>& area) {
    const bool isInside = area && cell.col >= area->ox && cell.col < area->ox + area->w &&
                          cell.row >= area->oy && cell.row < area->oy + area->h;
    if (!isInside) {
        return GridCellFill::empty;
    }
    if (cell.row == area->oy) {
        return GridCellFill::titleBar;
    }
    const bool isOnFrame = cell.col == area->ox || cell.col == area->ox + area->w - 1 ||
                           cell.row == area->oy + area->h - 1;
    return isOnFrame ? GridCellFill::frame : GridCellFill::interior;
}

std::optional<CellRect> GridEditorLayout::shownArea(const SnapCommand& command) {
    return command.targetSegments.empty() ? std::nullopt : cellRect(command.targetSegments.front());
}

std::string GridEditorLayout::label(const SnapCommand& command) {
    const std::optional<CellRect> area = shownArea(command);
    return area ? SettingsCoreTexts::gridLabel(GridSize::of(command.axis), *area)
                : std::string(SettingsCoreTexts::gridWithoutArea);
}

}  // namespace lumatile
