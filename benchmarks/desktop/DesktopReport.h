#pragma once

#include "benchmarks/desktop/SnapLatency.h"
#include "benchmarks/desktop/WindowEnumeration.h"
#include "benchmarks/support/Report.h"

namespace lumatile::benchmark {

/// Snapping by key and finding windows, beside what is wanted of it.
Report desktopReport(const SnapLatency& snap, const WindowEnumeration& enumeration);

}  // namespace lumatile::benchmark
