#include "benchmarks/protection/IdleCost.h"

#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

#include "benchmarks/protection/OtherPrograms.h"
#include "benchmarks/support/ProcessFigures.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::benchmark {

using desktop::DesktopError;
using desktop::LumatileProcess;
using desktop::MonitorLayout;
using desktop::TestDesktop;
using desktop::WindowManager;

namespace {

using Clock = std::chrono::steady_clock;

// Until the program has come to rest after its start.
constexpr std::chrono::seconds startTime{3};

/// A private desktop with the program on it.
class IdleDesktop {
public:
    explicit IdleDesktop(bool composited)
        : composited_(composited),
          desktop_(MonitorLayout::landscape(),
                   composited ? WindowManager::Kind::metacity : WindowManager::Kind::openbox,
                   {.ownBindings = false, .compositing = composited}),
          programs_(startPrograms(desktop_, 3)),
          program_(desktop_.session(), LUMATILE_PROGRAM, recommended()) {}

    void begin() {
        before_ = ProcessFigures::of(program_.pid());
        begin_ = Clock::now();
    }

    IdleCost end() {
        if (!program_.isRunning()) {
            throw DesktopError("the program has ended:\n" + program_.output());
        }
        const ProcessFigures after = ProcessFigures::of(program_.pid());
        const double seconds = std::chrono::duration<double>(Clock::now() - begin_).count();
        return {composited_,
                seconds,
                static_cast<double>(after.wakeUps - before_.wakeUps) / seconds,
                (after.processorSeconds - before_.processorSeconds) / seconds,
                after.residentKiB,
                after.proportionalKiB};
    }

private:
    static LumatileProcess::Settings recommended() {
        LumatileProcess::Settings settings;
        settings.oledSettings.reset();
        return settings;
    }

    bool composited_;
    TestDesktop desktop_;
    std::vector<desktop::ChildProcess> programs_;
    LumatileProcess program_;
    ProcessFigures before_;
    Clock::time_point begin_;
};

}  // namespace

std::vector<IdleCost> IdleCost::measure(int seconds) {
    std::fprintf(stderr, "idling: %d s\n", seconds);
    IdleDesktop composited(true);
    IdleDesktop plain(false);
    std::this_thread::sleep_for(startTime);
    composited.begin();
    plain.begin();
    std::this_thread::sleep_for(std::chrono::seconds(seconds));
    return {composited.end(), plain.end()};
}

}  // namespace lumatile::benchmark
