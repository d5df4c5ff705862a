#include "benchmarks/kwin/KWinIdleCost.h"

#include <chrono>
#include <cstdio>
#include <memory>
#include <thread>
#include <vector>

#include "benchmarks/support/ProcessFigures.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/TestDesktop.h"
#include "tests/desktop/support/kwin/KWinDesktop.h"

namespace lumatile::benchmark {

using desktop::DesktopError;
using desktop::KWinDesktop;
using desktop::LumatileProcess;
using desktop::MonitorLayout;
using desktop::NativeWindow;
using desktop::TestDesktop;
using desktop::TestWindow;
using desktop::WindowManager;

namespace {

using Clock = std::chrono::steady_clock;

// Until everything has come to rest after its start.
constexpr std::chrono::seconds startTime{5};
constexpr int windowCount = 3;

LumatileProcess::Settings recommended() {
    LumatileProcess::Settings settings;
    settings.oledSettings.reset();
    return settings;
}

class IdleKWin {
public:
    IdleKWin() {
        for (int count = 0; count < windowCount; ++count) {
            windows_.push_back(desktop_.openWindow({}));
        }
    }

    void startProgram() {
        program_ =
            std::make_unique<LumatileProcess>(desktop_.session(), LUMATILE_PROGRAM, recommended());
    }

    LumatileProcess& program() { return *program_; }
    ProcessFigures ofKWin() { return ProcessFigures::of(desktop_.server().pid()); }

private:
    KWinDesktop desktop_;
    std::vector<std::unique_ptr<NativeWindow>> windows_;
    std::unique_ptr<LumatileProcess> program_;
};

class IdleServer {
public:
    IdleServer()
        : desktop_(MonitorLayout::landscape(), WindowManager::Kind::openbox),
          window_(desktop_.openWindow({})),
          program_(desktop_.session(), LUMATILE_PROGRAM, recommended()) {}

    LumatileProcess& program() { return program_; }

private:
    TestDesktop desktop_;
    std::unique_ptr<TestWindow> window_;
    LumatileProcess program_;
};

ProcessFigures figuresOf(LumatileProcess& program) {
    if (!program.isRunning()) {
        throw DesktopError("the program has ended:\n" + program.output());
    }
    return ProcessFigures::of(program.pid());
}

}  // namespace

KWinIdleCost KWinIdleCost::measure(int seconds) {
    std::fprintf(stderr, "idling: %d s\n", seconds);
    IdleKWin used;
    IdleKWin bare;
    IdleServer server;
    used.startProgram();
    std::this_thread::sleep_for(startTime);
    const ProcessFigures programBefore = figuresOf(used.program());
    const ProcessFigures usedBefore = used.ofKWin();
    const ProcessFigures bareBefore = bare.ofKWin();
    const Clock::time_point begin = Clock::now();
    std::this_thread::sleep_for(std::chrono::seconds(seconds));
    const ProcessFigures programAfter = figuresOf(used.program());
    const ProcessFigures usedAfter = used.ofKWin();
    const ProcessFigures bareAfter = bare.ofKWin();
    const double looked = std::chrono::duration<double>(Clock::now() - begin).count();
    const auto perSecond = [looked](const ProcessFigures& before, const ProcessFigures& after) {
        return static_cast<double>(after.wakeUpsSince(before)) / looked;
    };
    const ProcessFigures onServer = figuresOf(server.program());
    return {looked,
            perSecond(programBefore, programAfter),
            perSecond(usedBefore, usedAfter),
            perSecond(bareBefore, bareAfter),
            programAfter.residentKiB,
            programAfter.proportionalKiB,
            onServer.residentKiB,
            onServer.proportionalKiB};
}

}  // namespace lumatile::benchmark
