// benchmark_desktop [--json FILE] [--rounds N]: key presses, N of each contestant, and finding
// windows.

#include <cstddef>

#include "benchmarks/desktop/DesktopReport.h"
#include "benchmarks/support/BenchmarkProgram.h"

int main(int argc, char** argv) {
    using namespace lumatile::benchmark;

    return runBenchmark(argc, argv, {"--rounds", 100}, [](int rounds) {
        constexpr std::size_t windows = 200;
        constexpr int enumerations = 20;
        const SnapLatency snap = SnapLatency::measure(rounds);
        return desktopReport(snap, WindowEnumeration::measure(windows, enumerations));
    });
}
