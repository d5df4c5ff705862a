#include "benchmarks/protection/ProtectionReport.h"

#include <algorithm>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>

namespace lumatile::benchmark {

namespace {

constexpr int nameWidth = 52;
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

}  // namespace

ProtectionReport::ProtectionReport(std::vector<StepCost> steps, SteppingMemory memory,
                                   std::vector<IdleCost> idleCosts)
    : steps_(std::move(steps)), memory_(memory), idle_(std::move(idleCosts)) {
    for (const StepCost& step : steps_) {
        rows_.push_back({"round trips of a step of " + windowsText(step),
                         static_cast<double>(step.roundTrips), mostRoundTrips});
        rows_.push_back({"writes a window and step, " + windowsText(step), step.writes, 1});
    }
    for (const StepCost& step : steps_) {
        rows_.push_back({"time / that of the bare moves, " + windowsText(step), step.toBareMoves(),
                         mostBesideBareMoves});
    }
    rows_.push_back({"our own time a window, " + windowsText(steps_.back()) + " / " +
                         windowsText(steps_.front()),
                     steps_.back().ownPerWindow() / steps_.front().ownPerWindow(), mostGrowth});
    rows_.push_back(
        {"resident memory, after / before the steps",
         static_cast<double>(memory_.residentAfter) / static_cast<double>(memory_.residentBefore),
         mostMemoryGrowth});
    rows_.push_back({"proportional memory, after / before the steps",
                     static_cast<double>(memory_.proportionalAfter) /
                         static_cast<double>(memory_.proportionalBefore),
                     mostMemoryGrowth});
    for (const IdleCost& idle : idle_) {
        rows_.push_back(
            {"wake-ups a second, " + idleText(idle), idle.wakeUpsPerSecond, mostWakeUps});
        rows_.push_back({"percent of a core, " + idleText(idle), idle.processorShare * percent,
                         mostProcessorPercent});
    }
}

bool ProtectionReport::isAsWanted() const {
    return std::all_of(rows_.begin(), rows_.end(), [](const Row& row) { return row.holds(); });
}

std::string ProtectionReport::table() const {
    std::ostringstream stream;
    stream << std::fixed << std::left << std::setw(nameWidth) << "a step of the orbit, microseconds"
           << std::right << std::setw(10) << "least" << std::setw(10) << "median" << std::setw(10)
           << "90%" << std::setw(10) << "bare" << std::setw(12) << "a window" << std::setw(14)
           << "own a window" << '\n';
    for (const StepCost& step : steps_) {
        stream << std::left << std::setw(nameWidth) << windowsText(step) << std::right
               << std::setprecision(0) << std::setw(10) << step.microseconds.least << std::setw(10)
               << step.microseconds.median << std::setw(10) << step.microseconds.ninetieth
               << std::setw(10) << step.bareMicroseconds.median << std::setprecision(1)
               << std::setw(12) << step.perWindow() << std::setw(14) << step.ownPerWindow() << '\n';
    }
    stream << "\nmemory before and after " << memory_.steps << " steps, KiB: resident "
           << memory_.residentBefore << " and " << memory_.residentAfter << ", proportional "
           << memory_.proportionalBefore << " and " << memory_.proportionalAfter << '\n';
    for (const IdleCost& idle : idle_) {
        stream << idleText(idle) << " for " << std::setprecision(0) << idle.seconds
               << " s, KiB: resident " << idle.residentKiB << ", proportional "
               << idle.proportionalKiB << '\n';
    }
    stream << '\n'
           << std::left << std::setw(nameWidth) << "counts, ratios" << std::right << std::setw(8)
           << "is" << std::setw(16) << "wanted" << '\n';
    for (const Row& row : rows_) {
        std::ostringstream wanted;
        wanted << "at most " << row.wantedAtMost;
        stream << std::left << std::setw(nameWidth) << row.name << std::right
               << std::setprecision(3) << std::setw(8) << row.value << std::setw(16) << wanted.str()
               << (row.holds() ? "  ok" : "  MISSED") << '\n';
    }
    return stream.str();
}

std::string ProtectionReport::json() const {
    nlohmann::ordered_json steps = nlohmann::ordered_json::array();
    for (const StepCost& step : steps_) {
        steps.push_back({{"windows", step.windows},
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
    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    for (const Row& row : rows_) {
        rows.push_back({{"name", row.name},
                        {"value", row.value},
                        {"wantedAtMost", row.wantedAtMost},
                        {"holds", row.holds()}});
    }
    nlohmann::ordered_json report = {{"windowManager", "openbox"},
                                     {"steps", steps},
                                     {"memoryKiB",
                                      {{"steps", memory_.steps},
                                       {"residentBefore", memory_.residentBefore},
                                       {"residentAfter", memory_.residentAfter},
                                       {"proportionalBefore", memory_.proportionalBefore},
                                       {"proportionalAfter", memory_.proportionalAfter}}}};
    for (const IdleCost& idle : idle_) {
        report["idle"].push_back({{"composited", idle.composited},
                                  {"seconds", idle.seconds},
                                  {"wakeUpsPerSecond", idle.wakeUpsPerSecond},
                                  {"processorShare", idle.processorShare},
                                  {"residentKiB", idle.residentKiB},
                                  {"proportionalKiB", idle.proportionalKiB}});
    }
    report["wanted"] = rows;
    return report.dump(2) + "\n";
}

}  // namespace lumatile::benchmark
