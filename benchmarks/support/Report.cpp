#include "benchmarks/support/Report.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <sstream>

namespace lumatile::benchmark {

namespace {

// Of least, median, 90 %, most and runs.
constexpr std::array widths{8, 10, 10, 10, 8};

constexpr int measuredWidth = 8;
constexpr int wantedWidth = 16;

// Ratios near 1 are to be told apart.
constexpr int digits = 3;

}  // namespace

std::string Report::timesHeading(const std::string& title) {
    std::ostringstream stream;
    stream << std::left << std::setw(nameWidth) << title << std::right << std::setw(widths[0])
           << "least" << std::setw(widths[1]) << "median" << std::setw(widths[2]) << "90%"
           << std::setw(widths[3]) << "most" << std::setw(widths[4]) << "runs" << '\n';
    return stream.str();
}

std::string Report::timesRow(const std::string& name, const Statistics& times) {
    std::ostringstream stream;
    stream << std::left << std::setw(nameWidth) << name << std::right << std::fixed
           << std::setprecision(0) << std::setw(widths[0]) << times.least << std::setw(widths[1])
           << times.median << std::setw(widths[2]) << times.ninetieth << std::setw(widths[3])
           << times.most << std::setw(widths[4]) << times.count << '\n';
    return stream.str();
}

nlohmann::ordered_json Report::timesData(const std::string& name, const Statistics& times) {
    return {{"name", name},
            {"microseconds",
             {{"least", times.least},
              {"median", times.median},
              {"ninetieth", times.ninetieth},
              {"most", times.most}}},
            {"samples", times.count}};
}

bool Report::isAsWanted() const {
    return std::all_of(figures.begin(), figures.end(),
                       [](const Figure& figure) { return figure.holds(); });
}

std::string Report::table() const {
    std::ostringstream stream;
    stream << measurements << '\n'
           << std::left << std::setw(nameWidth) << "ratios of medians, counts" << std::right
           << std::setw(measuredWidth) << "is" << std::setw(wantedWidth) << "wanted" << '\n';
    for (const Figure& figure : figures) {
        std::ostringstream wanted;
        wanted << (figure.bound == Figure::Bound::atMost ? "at most " : "at least ")
               << figure.wanted;
        stream << std::left << std::setw(nameWidth) << figure.name << std::right << std::fixed
               << std::setprecision(digits) << std::setw(measuredWidth) << figure.measured
               << std::setw(wantedWidth) << wanted.str() << (figure.holds() ? "  ok" : "  MISSED")
               << '\n';
    }
    return stream.str();
}

std::string Report::json() const {
    nlohmann::ordered_json all = data;
    nlohmann::ordered_json& wanted = all["wanted"] = nlohmann::ordered_json::array();
    for (const Figure& figure : figures) {
        const bool isAtMost = figure.bound == Figure::Bound::atMost;
        wanted.push_back({{"name", figure.name},
                          {"measured", figure.measured},
                          {isAtMost ? "wantedAtMost" : "wantedAtLeast", figure.wanted},
                          {"holds", figure.holds()}});
    }
    return all.dump(2) + "\n";
}

}  // namespace lumatile::benchmark
