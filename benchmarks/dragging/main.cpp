// benchmark_dragging [--json FILE] [--seconds N]: windows dragged to the edges of the screen, N
// seconds in each of some ways, and dropped there beside a window manager that tiles by itself.

#include "benchmarks/dragging/DraggingReport.h"
#include "benchmarks/support/BenchmarkProgram.h"

int main(int argc, char** argv) {
    using namespace lumatile::benchmark;

    return runBenchmark(argc, argv, {"--seconds", 10}, [](int seconds) {
        constexpr int drops = 40;
        const DragCost cost = DragCost::measure(seconds);
        return draggingReport(cost, DropLatency::measure(drops));
    });
}
