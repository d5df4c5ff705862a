// benchmark_settings [--json FILE] [--rounds N]: what the status item and the settings window cost.

#include "benchmarks/settings/SettingsReport.h"
#include "benchmarks/support/BenchmarkProgram.h"

int main(int argc, char** argv) {
    using namespace lumatile::benchmark;

    return runBenchmark(argc, argv, {"--rounds", 20}, [](int rounds) {
        constexpr int openings = 100;
        const SettingsTimes::Pair times = SettingsTimes::measure(rounds);
        return settingsReport(times, SettingsMemory::measure(openings));
    });
}
