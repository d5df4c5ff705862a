#pragma once

#include <cstddef>
#include <vector>

#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::benchmark {

/// Starts programs of one window each and returns when all windows are managed.
/// @throws DesktopError when they are not in time
std::vector<desktop::ChildProcess> startPrograms(desktop::TestDesktop& desktop, std::size_t count);

}  // namespace lumatile::benchmark
