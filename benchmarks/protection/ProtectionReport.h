#pragma once

#include <vector>

#include "benchmarks/protection/IdleCost.h"
#include "benchmarks/protection/StepCost.h"
#include "benchmarks/protection/SteppingMemory.h"
#include "benchmarks/support/Report.h"

namespace lumatile::benchmark {

/// What the panel protection costs, beside what is wanted of it.
/// @param steps in ascending order of their windows, at least two
/// @param idleCosts empty when it was not asked for
Report protectionReport(const std::vector<StepCost>& steps, const SteppingMemory& memory,
                        const std::vector<IdleCost>& idleCosts);

}  // namespace lumatile::benchmark
