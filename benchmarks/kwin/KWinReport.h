#pragma once

#include <optional>

#include "benchmarks/kwin/KWinIdleCost.h"
#include "benchmarks/kwin/KWinSnapLatency.h"
#include "benchmarks/kwin/KWinStepCost.h"
#include "benchmarks/support/Report.h"

namespace lumatile::benchmark {

/// What the program costs in a KWin session, beside what is wanted of it.
/// @param idle absent when it was not looked at
Report kwinReport(const KWinSnapLatency& snap, const KWinStepCost& step,
                  const std::optional<KWinIdleCost>& idle);

}  // namespace lumatile::benchmark
