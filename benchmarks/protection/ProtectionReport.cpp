#include "benchmarks/protection/ProtectionReport.h"

#include <iomanip>
#include <sstream>
#include <string>

namespace lumatile::benchmark {

namespace {

constexpr double percent = 100;

// Linear would be 1; more events that come at once are allowed for. The time on the clock grows
// with the window manager's and the server's, which have to sort out overlapping windows.
constexpr double mostGrowth = 2;

// Nearly all of a step is spent in the window manager and the server.
constexpr double mostBesideBareMoves = 2;

// The visible frames of the screens are one; the windows need none when nothing but their places
// has changed.
constexpr double mostRoundTrips = 3;

// Two timers, of one and of two seconds, that mostly fall together.
constexpr double mostWakeUps = 1.6;
constexpr double mostProcessorPercent = 0.1;

// One page more for every sixteen steps would be a leak of a few hundred bytes a step.
constexpr double mostMemoryGrowth = 1.02;

std::string idleText(const IdleCost& idle) {
    return std::string("idling ") + (idle.composited ? "under a compositor" : "without compositor");
}

std::string windowsText(const StepCost& step) { return std::to_string(step.windows) + " windows"; }

std::string measurements(const std::vector<StepCost>& steps, const SteppingMemory& memory,
                         const std::vector<IdleCost>& idleCosts) {
    std::ostringstream stream;
    stream << std::fixed << std::left << std::setw(Report::nameWidth)
           << "a step of the orbit, microseconds" << std::right << std::setw(10) << "least"
           << std::setw(10) << "median" << std::setw(10) << "90%" << std::setw(10) << "bare"
           << std::setw(12) << "a window" << std::setw(14) << "own a window" << '\n';
    for (const StepCost& step : steps) {
        stream << std::left << std::setw(Report::nameWidth) << windowsText(step) << std::right
               << std::setprecision(0) << std::setw(10) << step.microseconds.least << std::setw(10)
               << step.microseconds.median << std::setw(10) << step.microseconds.ninetieth
               << std::setw(10) << step.bareMicroseconds.median << std::setprecision(1)
               << std::setw(12) << step.perWindow() << std::setw(14) << step.ownPerWindow() << '\n';
    }
    stream << "\nmemory before and after " << memory.steps << " steps, KiB: resident "
           << memory.residentBefore << " and " << memory.residentAfter << ", proportional "
           << memory.proportionalBefore << " and " << memory.proportionalAfter << '\n';
    for (const IdleCost& idle : idleCosts) {
        stream << idleText(idle) << " for " << std::setprecision(0) << idle.seconds
               << " s, KiB: resident " << idle.residentKiB << ", proportional "
               << idle.proportionalKiB << '\n';
    }
    return stream.str();
}

nlohmann::ordered_json data(const std::vector<StepCost>& steps, const SteppingMemory& memory,
                            const std::vector<IdleCost>& idleCosts) {
    nlohmann::ordered_json stepping = nlohmann::ordered_json::array();
    for (const StepCost& step : steps) {
        stepping.push_back({{"windows", step.windows},
                            {"roundTrips", step.roundTrips},
                            {"writesPerWindow", step.writes},
                            {"microseconds",
                             {{"least", step.microseconds.least},
                              {"median", step.microseconds.median},
                              {"ninetieth", step.microseconds.ninetieth}}},
                            {"microsecondsPerWindow", step.perWindow()},
                            {"ownMicrosecondsPerWindow", step.ownPerWindow()},
                            {"microsecondsOfBareMoves", step.bareMicroseconds.median},
                            {"samples", step.microseconds.count}});
    }
    nlohmann::ordered_json data = {{"windowManager", "openbox"},
                                   {"steps", stepping},
                                   {"memoryKiB",
                                    {{"steps", memory.steps},
                                     {"residentBefore", memory.residentBefore},
                                     {"residentAfter", memory.residentAfter},
                                     {"proportionalBefore", memory.proportionalBefore},
                                     {"proportionalAfter", memory.proportionalAfter}}}};
    for (const IdleCost& idle : idleCosts) {
        data["idle"].push_back({{"composited", idle.composited},
                                {"seconds", idle.seconds},
                                {"wakeUpsPerSecond", idle.wakeUpsPerSecond},
                                {"processorShare", idle.processorShare},
                                {"residentKiB", idle.residentKiB},
                                {"proportionalKiB", idle.proportionalKiB}});
    }
    return data;
}

}  // namespace

Report protectionReport(const std::vector<StepCost>& steps, const SteppingMemory& memory,
                        const std::vector<IdleCost>& idleCosts) {
    Report report;
    report.measurements = measurements(steps, memory, idleCosts);
    report.data = data(steps, memory, idleCosts);
    std::vector<Figure>& figures = report.figures;
    for (const StepCost& step : steps) {
        figures.push_back({"round trips of a step of " + windowsText(step),
                           static_cast<double>(step.roundTrips), mostRoundTrips});
        figures.push_back({"writes a window and step, " + windowsText(step), step.writes, 1});
    }
    for (const StepCost& step : steps) {
        figures.push_back({"time / that of the bare moves, " + windowsText(step),
                           step.toBareMoves(), mostBesideBareMoves});
    }
    figures.push_back(
        {"our own time a window, " + windowsText(steps.back()) + " / " + windowsText(steps.front()),
         steps.back().ownPerWindow() / steps.front().ownPerWindow(), mostGrowth});
    figures.push_back(
        {"resident memory, after / before the steps",
         static_cast<double>(memory.residentAfter) / static_cast<double>(memory.residentBefore),
         mostMemoryGrowth});
    figures.push_back({"proportional memory, after / before the steps",
                       static_cast<double>(memory.proportionalAfter) /
                           static_cast<double>(memory.proportionalBefore),
                       mostMemoryGrowth});
    for (const IdleCost& idle : idleCosts) {
        figures.push_back(
            {"wake-ups a second, " + idleText(idle), idle.wakeUpsPerSecond, mostWakeUps});
        figures.push_back({"percent of a core, " + idleText(idle), idle.processorShare * percent,
                           mostProcessorPercent});
    }
    return report;
}

}  // namespace lumatile::benchmark
