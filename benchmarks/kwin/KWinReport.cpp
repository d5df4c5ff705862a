#include "benchmarks/kwin/KWinReport.h"

#include <iomanip>
#include <sstream>
#include <string>

namespace lumatile::benchmark {

namespace {

// What KWin does by itself, without another process.
constexpr double mostBesideQuickTile = 1.5;
constexpr double mostBesideBareMoves = 1.3;
constexpr double mostWakeUps = 1.6;
constexpr double mostMemoryBesideX11 = 2048;  // KiB.

std::string stepText(const KWinStepCost& step) {
    return "a step of " + std::to_string(step.windows) + " windows";
}

std::string measurements(const KWinSnapLatency& snap, const KWinStepCost& step,
                         const std::optional<KWinIdleCost>& idle) {
    std::ostringstream stream;
    stream << Report::timesHeading("in a KWin session, microseconds")
           << Report::timesRow("key press to new geometry: Lumatile", snap.lumatile)
           << Report::timesRow("key press to new geometry: KWin's quick tile", snap.quickTile)
           << Report::timesRow(stepText(step), step.step)
           << Report::timesRow("the same by a bare script", step.bare);
    if (idle) {
        stream << std::fixed << std::setprecision(2) << "\nidling for " << idle->seconds
               << " s, wake-ups a second: Lumatile " << idle->wakeUpsPerSecond
               << ", KWin with its script " << idle->kwinWakeUpsPerSecond << ", without "
               << idle->bareWakeUpsPerSecond << "\nKiB: resident " << idle->residentKiB
               << ", proportional " << idle->proportionalKiB << "; on an X server resident "
               << idle->x11ResidentKiB << ", proportional " << idle->x11ProportionalKiB << '\n';
    }
    return stream.str();
}

}  // namespace

Report kwinReport(const KWinSnapLatency& snap, const KWinStepCost& step,
                  const std::optional<KWinIdleCost>& idle) {
    Report report;
    report.measurements = measurements(snap, step, idle);
    report.data = {{"windowManager", "KWin, Wayland"},
                   {"keyPressToNewGeometry",
                    {Report::timesData("Lumatile", snap.lumatile),
                     Report::timesData("KWin's quick tile", snap.quickTile)}},
                   {"step",
                    {{"windows", step.windows},
                     {"times",
                      {Report::timesData("Lumatile", step.step),
                       Report::timesData("bare script", step.bare)}}}}};
    report.figures.push_back({"Lumatile / KWin's quick tile",
                              snap.lumatile.median / snap.quickTile.median, mostBesideQuickTile});
    report.figures.push_back(
        {stepText(step) + " / bare script", step.toBareMoves(), mostBesideBareMoves});
    if (idle) {
        report.data["idle"] = {{"seconds", idle->seconds},
                               {"wakeUpsPerSecond", idle->wakeUpsPerSecond},
                               {"kwinWakeUpsPerSecond", idle->kwinWakeUpsPerSecond},
                               {"bareWakeUpsPerSecond", idle->bareWakeUpsPerSecond},
                               {"residentKiB", idle->residentKiB},
                               {"proportionalKiB", idle->proportionalKiB},
                               {"x11ResidentKiB", idle->x11ResidentKiB},
                               {"x11ProportionalKiB", idle->x11ProportionalKiB}};
        report.figures.push_back(
            {"wake-ups a second, both processes", idle->causedWakeUpsPerSecond(), mostWakeUps});
        report.figures.push_back({"KiB more than under X11, proportional",
                                  static_cast<double>(idle->proportionalKiB) -
                                      static_cast<double>(idle->x11ProportionalKiB),
                                  mostMemoryBesideX11});
    }
    return report;
}

}  // namespace lumatile::benchmark
