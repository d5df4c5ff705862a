#pragma once

#include "benchmarks/dragging/DragCost.h"
#include "benchmarks/dragging/DropLatency.h"
#include "benchmarks/support/Report.h"

namespace lumatile::benchmark {

/// Dragging to the edges of the screen, beside what is wanted of it.
Report draggingReport(const DragCost& cost, const DropLatency& drop);

}  // namespace lumatile::benchmark
