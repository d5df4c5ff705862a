#pragma once

#include <memory>

#include "Lumatile/DesktopTiling.h"
#include "Lumatile/RunLoop.h"
#include "onboarding/SystemTilingMonitor.h"

namespace lumatile {

/// The desktop's tiling as it is now.
SystemTiling readTiling(DesktopTiling& desktop);

/// A monitor of the desktop's tiling, not started. Both outlive it.
std::unique_ptr<SystemTilingMonitor> monitorTiling(DesktopTiling& desktop, RunLoop& runLoop);

}  // namespace lumatile
