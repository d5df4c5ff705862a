// benchmark_kwin [--json FILE] [--idle SECONDS]: what the program costs in a KWin session under
// Wayland. It is not looked at idling for 0 seconds.

#include <optional>

#include "benchmarks/kwin/KWinReport.h"
#include "benchmarks/support/BenchmarkProgram.h"

int main(int argc, char** argv) {
    using namespace lumatile::benchmark;

    return runBenchmark(argc, argv, {"--idle", 60, 0}, [](int idleSeconds) {
        constexpr int presses = 100;
        constexpr std::size_t windows = 50;
        constexpr int steps = 50;
        const KWinSnapLatency snap = KWinSnapLatency::measure(presses);
        const KWinStepCost step = KWinStepCost::measure(windows, steps);
        std::optional<KWinIdleCost> idle;
        if (idleSeconds > 0) {
            idle = KWinIdleCost::measure(idleSeconds);
        }
        return kwinReport(snap, step, idle);
    });
}
