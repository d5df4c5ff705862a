#include "benchmarks/settings/SettingsReport.h"

#include <array>
#include <sstream>
#include <string>
#include <utility>

namespace lumatile::benchmark {

namespace {

constexpr double kibibytesOfMebibyte = 1024;

// Before the window was ever opened; the toolkit with an item alone takes about 19.
constexpr double mostMebibytes = 22;

// From the second opening on nothing more is kept: 2 % of 25 MiB in 98 openings are 5 KiB each,
// less than one picture of the window's symbols.
constexpr double mostGrowth = 1.02;

// Nobody sees whether an item comes half as late again as one that does nothing.
constexpr double mostToBareStart = 1.5;

// The window is made once.
constexpr double mostSecondOpen = 1;

struct Row {
    std::string name;
    const Statistics& times;
};

std::array<Row, 6> rows(const SettingsTimes::Pair& times) {
    return {{{"start to status item", times.ours.start},
             {"start to status item, bare", times.bare.start},
             {"first opening of the settings", times.ours.firstOpen},
             {"first opening of a bare window", times.bare.firstOpen},
             {"second opening of the settings", times.ours.secondOpen},
             {"second opening of a bare window", times.bare.secondOpen}}};
}

std::array<std::pair<const char*, std::uint64_t>, 6> memoryRows(const SettingsMemory& memory) {
    return {{{"bare", memory.bare},
             {"neverOpened", memory.neverOpened},
             {"open", memory.open},
             {"closed", memory.closed},
             {"closedTwice", memory.closedTwice},
             {"closedOften", memory.closedOften}}};
}

}  // namespace

Report settingsReport(const SettingsTimes::Pair& times, const SettingsMemory& memory) {
    Report report;
    report.measurements = Report::timesHeading("microseconds");
    nlohmann::ordered_json& timesData = report.data["times"] = nlohmann::ordered_json::array();
    for (const Row& row : rows(times)) {
        report.measurements += Report::timesRow(row.name, row.times);
        timesData.push_back(Report::timesData(row.name, row.times));
    }
    std::ostringstream text;
    text << "\nproportional memory, KiB (often: " << memory.times << " times):";
    nlohmann::ordered_json& memoryData = report.data["proportionalKiB"];
    for (const auto& [name, kibibytes] : memoryRows(memory)) {
        text << ' ' << name << ' ' << kibibytes;
        memoryData[name] = kibibytes;
    }
    memoryData["times"] = memory.times;
    report.measurements += text.str() + "\n";

    report.figures = {
        {"start to status item / that of a bare program",
         times.ours.start.median / times.bare.start.median, mostToBareStart},
        {"second opening / first opening of the settings",
         times.ours.secondOpen.median / times.ours.firstOpen.median, mostSecondOpen},
        {"proportional memory, never opened, MiB",
         static_cast<double>(memory.neverOpened) / kibibytesOfMebibyte, mostMebibytes},
        {"proportional memory, opened often / twice",
         static_cast<double>(memory.closedOften) / static_cast<double>(memory.closedTwice),
         mostGrowth},
    };
    return report;
}

}  // namespace lumatile::benchmark
