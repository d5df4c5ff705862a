#include "benchmarks/protection/IdleCost.h"

#include <chrono>
#include <cstdio>

#include "benchmarks/protection/OtherPrograms.h"
#include "benchmarks/protection/ProcessFigures.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::benchmark {

using desktop::Deadline;
using desktop::DesktopError;
using desktop::LumatileProcess;
using desktop::MonitorLayout;
using desktop::TestDesktop;
using desktop::WindowManager;

namespace {

using Clock = std::chrono::steady_clock;

// Until the program has come to rest after its start.
constexpr std::chrono::seconds startTime{3};

void letPass(LumatileProcess& program, std::chrono::seconds time) {
    if (program.wait(Deadline::in(time))) {
        throw DesktopError("the program ends:\n" + program.output());
    }
}

}  // namespace

IdleCost IdleCost::measure(int seconds) {
    std::fprintf(stderr, "idling: %d s\n", seconds);
    TestDesktop desktop(MonitorLayout::landscape(), WindowManager::Kind::openbox);
    const auto programs = startPrograms(desktop, 3);
    LumatileProcess::Settings settings;
    settings.oledSettings.reset();
    LumatileProcess program(desktop.session(), LUMATILE_PROGRAM, settings);
    letPass(program, startTime);
    const ProcessFigures before = ProcessFigures::of(program.pid());
    const Clock::time_point begin = Clock::now();
    letPass(program, std::chrono::seconds(seconds));
    const ProcessFigures after = ProcessFigures::of(program.pid());
    IdleCost cost;
    cost.seconds = std::chrono::duration<double>(Clock::now() - begin).count();
    cost.wakeUpsPerSecond = static_cast<double>(after.wakeUps - before.wakeUps) / cost.seconds;
    cost.processorShare = (after.processorSeconds - before.processorSeconds) / cost.seconds;
    cost.residentKiB = after.residentKiB;
    cost.proportionalKiB = after.proportionalKiB;
    return cost;
}

}  // namespace lumatile::benchmark
