#pragma once

#include <vector>

/// Programs of the desktop, by the names of their desktop entries.
namespace lumatile::InstalledPrograms {

/// Names of desktop entries, the best first.
using Names = std::vector<const char*>;

/// Whether one of them is installed.
bool hasAny(const Names& names);

/// Starts the first that is installed, as the desktop's menu does.
/// @return false when none could be started
bool start(const Names& names);

}  // namespace lumatile::InstalledPrograms
