#include "benchmarks/desktop/Report.h"

#include <algorithm>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>

namespace lumatile::benchmark {

namespace {

constexpr int nameWidth = 52;

void putTimes(std::ostream& stream, const std::string& name, const Statistics& times) {
    stream << std::left << std::setw(nameWidth) << name << std::right << std::fixed
           << std::setprecision(0) << std::setw(8) << times.least << std::setw(10) << times.median
           << std::setw(10) << times.ninetieth << std::setw(8) << times.count << '\n';
}

nlohmann::ordered_json toJSON(const std::string& name, const Statistics& times) {
    return {{"name", name},
            {"microseconds",
             {{"least", times.least}, {"median", times.median}, {"ninetieth", times.ninetieth}}},
            {"samples", times.count}};
}

double times(const Statistics& slow, const Statistics& fast) { return slow.median / fast.median; }

std::string enumerationName(const WindowEnumeration& enumeration) {
    return "enumerating " + std::to_string(enumeration.windows) + " windows";
}

}  // namespace

Report::Report(SnapLatency snap, WindowEnumeration enumeration)
    : snap_(std::move(snap)), enumeration_(enumeration) {
    const Statistics& own = snap_.lumatile.microseconds;
    rows_.push_back(
        {"Lumatile / openbox key binding", "", times(own, snap_.ownBinding.microseconds), 2, true});
    for (const SnapMethod& method : snap_.daemon) {
        rows_.push_back(
            {method.name + " / Lumatile", "", times(method.microseconds, own), 5, false});
    }
    rows_.push_back({enumerationName(enumeration_), "round trips",
                     static_cast<double>(enumeration_.roundTrips), 3, true});
    rows_.push_back({"the same again, nothing changed", "round trips",
                     static_cast<double>(enumeration_.roundTripsNext), 3, true});
}

std::vector<SnapMethod> Report::methods() const {
    std::vector<SnapMethod> all{snap_.lumatile, snap_.ownBinding};
    all.insert(all.end(), snap_.daemon.begin(), snap_.daemon.end());
    return all;
}

bool Report::isAsWanted() const {
    return std::all_of(rows_.begin(), rows_.end(), [](const Row& row) { return row.holds(); });
}

std::string Report::table() const {
    std::ostringstream stream;
    stream << std::left << std::setw(nameWidth) << "key press to new geometry, microseconds"
           << std::right << std::setw(8) << "least" << std::setw(10) << "median" << std::setw(10)
           << "90%" << std::setw(8) << "runs" << '\n';
    for (const SnapMethod& method : methods()) {
        putTimes(stream, method.name, method.microseconds);
    }
    stream << '\n' << enumerationName(enumeration_) << " with their frames, microseconds\n";
    putTimes(stream, "Lumatile's adapter, new on the server", enumeration_.together);
    putTimes(stream, "nine requests a window, each waited for", enumeration_.oneByOne);
    stream << std::left << std::setw(nameWidth) << "one by one / Lumatile's" << std::right
           << std::setprecision(1) << std::setw(18)
           << times(enumeration_.oneByOne, enumeration_.together) << "\n\n";

    stream << std::left << std::setw(nameWidth) << "ratios of medians, counts" << std::right
           << std::setw(8) << "is" << std::setw(16) << "wanted" << '\n';
    for (const Row& row : rows_) {
        std::ostringstream wanted;
        wanted << (row.atMost ? "at most " : "at least ") << row.wanted;
        stream << std::left << std::setw(nameWidth)
               << (row.unit.empty() ? row.name : row.name + ", " + row.unit) << std::right
               << std::setprecision(row.unit.empty() ? 2 : 0) << std::setw(8) << row.value
               << std::setw(16) << wanted.str() << (row.holds() ? "  ok" : "  MISSED") << '\n';
    }
    return stream.str();
}

std::string Report::json() const {
    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    for (const Row& row : rows_) {
        rows.push_back({{"name", row.name},
                        {"unit", row.unit.empty() ? "ratio of medians" : row.unit},
                        {"value", row.value},
                        {row.atMost ? "wantedAtMost" : "wantedAtLeast", row.wanted},
                        {"holds", row.holds()}});
    }
    nlohmann::ordered_json snaps = nlohmann::ordered_json::array();
    for (const SnapMethod& method : methods()) {
        snaps.push_back(toJSON(method.name, method.microseconds));
    }
    const nlohmann::ordered_json report = {
        {"windowManager", "openbox"},
        {"keyPressToNewGeometry", snaps},
        {"enumeration",
         {{"windows", enumeration_.windows},
          {"roundTrips", enumeration_.roundTrips},
          {"roundTripsNothingChanged", enumeration_.roundTripsNext},
          {"times",
           {toJSON("Lumatile's adapter", enumeration_.together),
            toJSON("one by one", enumeration_.oneByOne)}}}},
        {"wanted", rows}};
    return report.dump(2) + "\n";
}

}  // namespace lumatile::benchmark
