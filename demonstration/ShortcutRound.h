#pragma once

#include "demonstration/DemonstrationDesktop.h"
#include "demonstration/ResultTable.h"

namespace lumatile::demonstration {

/// Presses every default shortcut on every screen and adds a row for each to the table.
void pressEveryShortcut(DemonstrationDesktop& desktop, ResultTable& table);

/// Arranges the windows by shortcuts, several times, and saves a picture of each arrangement.
/// @return the files
std::vector<std::filesystem::path> savePictures(DemonstrationDesktop& desktop,
                                                const std::filesystem::path& folder);

}  // namespace lumatile::demonstration
