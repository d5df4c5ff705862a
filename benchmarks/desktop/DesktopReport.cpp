#include "benchmarks/desktop/DesktopReport.h"

#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

namespace lumatile::benchmark {

namespace {

using Bound = Figure::Bound;

// What a user's own window manager does without any other program.
constexpr double mostBesideOwnBinding = 1.15;

// Anybody beside the window manager is two turns of the processor later than its own binding. What
// a program may add to these.
constexpr double mostBesideBareMessage = 1.15;

double times(const Statistics& slow, const Statistics& fast) { return slow.median / fast.median; }

std::vector<SnapMethod> methodsOf(const SnapLatency& snap) {
    std::vector<SnapMethod> all{snap.lumatile, snap.ownBinding, snap.bareMessage};
    all.insert(all.end(), snap.daemon.begin(), snap.daemon.end());
    return all;
}

std::string measurements(const SnapLatency& snap, const WindowEnumeration& enumeration,
                         const std::string& enumerating) {
    std::ostringstream stream;
    stream << Report::timesHeading("key press to new geometry, microseconds");
    for (const SnapMethod& method : methodsOf(snap)) {
        stream << Report::timesRow(method.name, method.microseconds);
    }
    stream << '\n'
           << enumerating << " with their frames, microseconds\n"
           << Report::timesRow("Lumatile's adapter, new on the server", enumeration.together)
           << Report::timesRow("nine requests a window, each waited for", enumeration.oneByOne)
           << std::left << std::setw(Report::nameWidth) << "one by one / Lumatile's" << std::right
           << std::fixed << std::setprecision(1) << std::setw(18)
           << times(enumeration.oneByOne, enumeration.together) << '\n';
    return stream.str();
}

nlohmann::ordered_json data(const SnapLatency& snap, const WindowEnumeration& enumeration) {
    nlohmann::ordered_json snaps = nlohmann::ordered_json::array();
    for (const SnapMethod& method : methodsOf(snap)) {
        snaps.push_back(Report::timesData(method.name, method.microseconds));
    }
    return {{"windowManager", "openbox"},
            {"keyPressToNewGeometry", snaps},
            {"enumeration",
             {{"windows", enumeration.windows},
              {"roundTrips", enumeration.roundTrips},
              {"roundTripsNothingChanged", enumeration.roundTripsNext},
              {"times",
               {Report::timesData("Lumatile's adapter", enumeration.together),
                Report::timesData("one by one", enumeration.oneByOne)}}}}};
}

}  // namespace

Report desktopReport(const SnapLatency& snap, const WindowEnumeration& enumeration) {
    const std::string enumerating =
        "enumerating " + std::to_string(enumeration.windows) + " windows";
    Report report;
    report.measurements = measurements(snap, enumeration, enumerating);
    report.data = data(snap, enumeration);
    const Statistics& own = snap.lumatile.microseconds;
    report.figures.push_back({"Lumatile / openbox key binding",
                              times(own, snap.ownBinding.microseconds), mostBesideOwnBinding});
    report.figures.push_back({"Lumatile / a bare message to openbox",
                              times(own, snap.bareMessage.microseconds), mostBesideBareMessage});
    for (const SnapMethod& method : snap.daemon) {
        report.figures.push_back(
            {method.name + " / Lumatile", times(method.microseconds, own), 5, Bound::atLeast});
    }
    report.figures.push_back(
        {enumerating + ", round trips", static_cast<double>(enumeration.roundTrips), 3});
    report.figures.push_back({"the same again, nothing changed, round trips",
                              static_cast<double>(enumeration.roundTripsNext), 3});
    return report;
}

}  // namespace lumatile::benchmark
