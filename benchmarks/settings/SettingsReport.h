#pragma once

#include "benchmarks/settings/SettingsMemory.h"
#include "benchmarks/settings/SettingsTimes.h"
#include "benchmarks/support/Report.h"

namespace lumatile::benchmark {

/// What status item and settings window cost, beside what is wanted of them.
Report settingsReport(const SettingsTimes::Pair& times, const SettingsMemory& memory);

}  // namespace lumatile::benchmark
