#include "benchmarks/settings/MeasuredProgram.h"

#include <chrono>

#include "platform/freedesktop/bus/DisplayToken.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/MainLoop.h"

namespace lumatile::benchmark {

using desktop::DesktopError;
using desktop::MonitorLayout;
using desktop::WindowManager;

namespace {

using Clock = std::chrono::steady_clock;

double microsecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::micro>(Clock::now() - begin).count();
}

constexpr const char* outputName = "measured";

}  // namespace

MeasuredProgram::MeasuredProgram()
    : desktop_(MonitorLayout::landscape(), WindowManager::Kind::openbox,
               WindowManager::Options{.ownBindings = false, .compositing = false}),
      address_(desktop_.session().environment().at("DBUS_SESSION_BUS_ADDRESS")),
      bar_(address_),
      contents_(desktop_.display()),
      bus_(address_),
      instance_("org.lumatile.Lumatile." + displayToken(desktop_.display())) {}

double MeasuredProgram::start(const std::string& program) {
    bar_.forget();
    const Clock::time_point begin = Clock::now();
    process_ = desktop_.session().start({program}, outputName);
    bar_.waitForItem();
    return microsecondsSince(begin);
}

double MeasuredProgram::open() {
    bool hasAnswered = false;
    std::string refusal;
    constexpr int patience = 20000;
    const Clock::time_point begin = Clock::now();
    bus_.call(
        {instance_.c_str(), "/org/lumatile/Lumatile", "org.lumatile.Lumatile", "OpenSettings"},
        nullptr, patience, false, [&](const BusConnection::Reply& reply) {
            hasAnswered = true;
            refusal = reply.error;
        });
    // The answer is sent before the window is made.
    if (!desktop::runUntil([&] { return hasAnswered; }) || !refusal.empty()) {
        throw DesktopError("the program cannot be asked to open its window: " + refusal);
    }
    contents_.waitForOpened();
    return microsecondsSince(begin);
}

ProcessFigures MeasuredProgram::figures() const { return ProcessFigures::of(process_.pid()); }

void MeasuredProgram::stop() {
    if (!process_.isRunning()) {
        throw DesktopError("the program has ended:\n" + desktop_.session().output(outputName));
    }
    process_.stop();
}

}  // namespace lumatile::benchmark
