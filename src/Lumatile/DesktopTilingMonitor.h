#pragma once

#include <memory>

#include "onboarding/SystemTilingMonitor.h"
#include "ports/DesktopTiling.h"
#include "ports/RunLoop.h"

namespace lumatile {

/// The desktop's tiling as it is now.
SystemTiling readTiling(DesktopTiling& desktop);

/// A monitor of the desktop's tiling, not started. Both outlive it.
std::unique_ptr<SystemTilingMonitor> monitorTiling(DesktopTiling& desktop, RunLoop& runLoop);

}  // namespace lumatile
