// benchmark_protection [--json FILE] [--idle SECONDS]: what the panel protection costs. The program
// is not looked at idling for 0 seconds.

#include <vector>

#include "benchmarks/protection/ProtectionReport.h"
#include "benchmarks/support/BenchmarkProgram.h"

int main(int argc, char** argv) {
    using namespace lumatile::benchmark;

    return runBenchmark(argc, argv, {"--idle", 60, 0}, [](int idleSeconds) {
        constexpr int measuredSteps = 100;
        constexpr int stepsOfAnHour = 3600;
        std::vector<StepCost> steps;
        for (const std::size_t windows : {10U, 50U, 200U}) {
            steps.push_back(StepCost::measure(windows, measuredSteps));
        }
        const SteppingMemory memory = SteppingMemory::measure(stepsOfAnHour);
        std::vector<IdleCost> idle;
        if (idleSeconds > 0) {
            idle = IdleCost::measure(idleSeconds);
        }
        return protectionReport(steps, memory, idle);
    });
}
