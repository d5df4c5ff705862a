#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "geometry/CellRect.h"
#include "geometry/GridSize.h"

/// What the settings say that does not depend on how they are drawn.
namespace lumatile::SettingsCoreTexts {

inline constexpr std::string_view general = "General";
inline constexpr std::string_view snapAreas = "Snap Areas";
inline constexpr std::string_view oledProtection = "OLED Protection";
inline constexpr std::string_view about = "About";

inline constexpr std::string_view gridWithoutArea = "Snap area grid, no area set";

/// For a listener, who counts from 1.
inline std::string gridLabel(const GridSize& grid, const CellRect& area) {
    const auto by = [](std::int64_t across, std::int64_t down) {
        return std::to_string(across) + " by " + std::to_string(down) + " cells";
    };
    return "Snap area grid, " + by(grid.cols, grid.rows) + ". Area: " + by(area.w, area.h) +
           ", starting at column " + std::to_string(area.ox + 1) + ", row " +
           std::to_string(area.oy + 1) + ". Drag to change it.";
}

}  // namespace lumatile::SettingsCoreTexts
