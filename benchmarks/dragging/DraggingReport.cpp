#include "benchmarks/dragging/DraggingReport.h"

#include <iomanip>
#include <sstream>

namespace lumatile::benchmark {

namespace {

constexpr double percent = 100;
constexpr double microsecondsOfMillisecond = 1000;

constexpr double mostProcessorPercent = 2;

// A picture of a screen at 60 Hz: what comes within it is not seen to be late.
constexpr double frameMilliseconds = 1000.0 / 60;

// The window manager's own tile is one decision of one program; ours is told through the server.
constexpr double mostBesideOwnTile = 1.2;

}  // namespace

Report draggingReport(const DragCost& cost, const DropLatency& drop) {
    std::ostringstream stream;
    stream << std::left << std::setw(Report::nameWidth) << "dragging with 1000 movements a second"
           << std::right << std::setw(8) << "% core" << std::setw(12) << "wake-ups/s"
           << std::setw(14) << "mouse late us" << std::setw(16) << "server late us" << '\n';
    Report report;
    report.data = {{"windowManager", "openbox"}};
    for (const DragCost::Course& course : cost.courses) {
        stream << std::left << std::setw(Report::nameWidth) << course.name << std::right
               << std::fixed << std::setprecision(2) << std::setw(8)
               << course.processorShare * percent << std::setprecision(0) << std::setw(12)
               << course.wakeUpsPerSecond << std::setw(14) << course.pace.latestReport
               << std::setw(16) << course.pace.serverBehind << '\n';
        report.data["courses"].push_back({{"name", course.name},
                                          {"seconds", course.pace.seconds},
                                          {"processorShare", course.processorShare},
                                          {"wakeUpsPerSecond", course.wakeUpsPerSecond},
                                          {"mouseLateMicroseconds", course.pace.latestReport},
                                          {"serverLateMicroseconds", course.pace.serverBehind}});
        report.figures.push_back({"percent of a core, dragging " + course.name,
                                  course.processorShare * percent, mostProcessorPercent});
    }
    stream << '\n'
           << Report::timesHeading("movement to highlight, microseconds")
           << Report::timesRow("new target", cost.lateness);
    report.data["movementToHighlight"] = Report::timesData("new target", cost.lateness);
    report.figures.push_back({"longest delay of the highlight, frames",
                              cost.lateness.most / microsecondsOfMillisecond / frameMilliseconds,
                              1});
    stream << '\n'
           << Report::timesHeading("release to new geometry, microseconds")
           << Report::timesRow("Lumatile under metacity", drop.lumatile)
           << Report::timesRow("metacity itself", drop.own);
    report.data["releaseToNewGeometry"] = {
        Report::timesData("Lumatile under metacity", drop.lumatile),
        Report::timesData("metacity itself", drop.own)};
    report.figures.push_back({"release: Lumatile / metacity itself",
                              drop.lumatile.median / drop.own.median, mostBesideOwnTile});
    report.measurements = stream.str();
    return report;
}

}  // namespace lumatile::benchmark
