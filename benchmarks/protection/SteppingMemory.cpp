#include "benchmarks/protection/SteppingMemory.h"

#include <unistd.h>

#include <cstddef>
#include <cstdio>

#include "benchmarks/protection/OtherPrograms.h"
#include "benchmarks/support/ProcessFigures.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/ShiftingDesktop.h"

namespace lumatile::benchmark {

using desktop::DesktopError;
using desktop::ShiftingDesktop;
using desktop::WindowManager;

SteppingMemory SteppingMemory::measure(int steps) {
    std::fprintf(stderr, "memory over %d steps\n", steps);
    ShiftingDesktop shifting(WindowManager::Kind::openbox, ShiftingDesktop::shiftAndJitter);
    // Windows of other processes, so that what they keep is not counted.
    constexpr std::size_t programs = 20;
    const auto open = startPrograms(shifting.desktop(), programs);
    const auto walk = [&](int count) {
        for (int taken = 0; taken < count; ++taken) {
            shifting.step();
            // What the test overhears is not the application's.
            shifting.observer().forget();
        }
    };
    // Every buffer has its size after a few rings.
    constexpr int firstSteps = 160;
    walk(firstSteps);
    const ProcessFigures before = ProcessFigures::of(getpid());
    walk(steps);
    const ProcessFigures after = ProcessFigures::of(getpid());
    const auto& last = shifting.conductor().orbit().lastShift();
    if (!last || shifting.conductor().orbit().trackedCount() != programs ||
        shifting.clock().wallSeconds() - last->at > ShiftingDesktop::interval) {
        throw DesktopError("the windows do not move");
    }
    return {steps, before.residentKiB, after.residentKiB, before.proportionalKiB,
            after.proportionalKiB};
}

}  // namespace lumatile::benchmark
