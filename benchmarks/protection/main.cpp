// benchmark_protection [--json FILE] [--idle SECONDS]: a table on standard output; ends with 1 when
// a figure is not as wanted, with 2 when something could not be measured. The program is not looked
// at idling for 0 seconds.

#include <charconv>
#include <cstdio>
#include <exception>
#include <fstream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "benchmarks/protection/ProtectionReport.h"

namespace {

constexpr int exitUnmeasured = 2;

struct Arguments {
    std::string json;
    int idleSeconds = 60;
    bool valid = true;
};

Arguments parse(std::span<char*> words) {
    Arguments arguments;
    for (std::size_t index = 1; index < words.size(); index += 2) {
        const std::string_view name = words[index];
        const std::string_view value = index + 1 < words.size() ? words[index + 1] : "";
        if (name == "--json" && !value.empty()) {
            arguments.json = value;
        } else if (name == "--idle") {
            const char* const end = value.data() + value.size();
            const auto parsed = std::from_chars(value.data(), end, arguments.idleSeconds);
            arguments.valid = arguments.valid && !value.empty() && parsed.ptr == end &&
                              arguments.idleSeconds >= 0;
        } else {
            arguments.valid = false;
        }
    }
    return arguments;
}

}  // namespace

int main(int argc, char** argv) {
    using namespace lumatile::benchmark;

    const Arguments arguments = parse(std::span(argv, static_cast<std::size_t>(argc)));
    if (!arguments.valid) {
        std::fputs("usage: benchmark_protection [--json FILE] [--idle SECONDS]\n", stderr);
        return exitUnmeasured;
    }
    try {
        constexpr int measuredSteps = 100;
        constexpr int stepsOfAnHour = 3600;
        std::vector<StepCost> steps;
        for (const std::size_t windows : {10U, 50U, 200U}) {
            steps.push_back(StepCost::measure(windows, measuredSteps));
        }
        const SteppingMemory memory = SteppingMemory::measure(stepsOfAnHour);
        std::vector<IdleCost> idle;
        if (arguments.idleSeconds > 0) {
            idle = IdleCost::measure(arguments.idleSeconds);
        }
        const ProtectionReport report(steps, memory, idle);
        std::fputs(report.table().c_str(), stdout);
        if (!arguments.json.empty()) {
            std::ofstream file(arguments.json);
            file << report.json();
            file.close();
            if (!file) {
                std::fprintf(stderr, "cannot write %s\n", arguments.json.c_str());
                return exitUnmeasured;
            }
        }
        return report.isAsWanted() ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "not measured: %s\n", error.what());
        return exitUnmeasured;
    }
}
