// benchmark_desktop [--json FILE] [--rounds N]: a table on standard output; ends with 1 when a
// ratio is not as wanted, with 2 when something could not be measured.

#include <charconv>
#include <cstdio>
#include <exception>
#include <fstream>
#include <span>
#include <string>
#include <string_view>

#include "benchmarks/desktop/Report.h"

namespace {

constexpr int exitUnmeasured = 2;

struct Arguments {
    std::string json;
    int rounds = 100;
    bool valid = true;
};

Arguments parse(std::span<char*> words) {
    Arguments arguments;
    for (std::size_t index = 1; index < words.size(); index += 2) {
        const std::string_view name = words[index];
        const std::string_view value = index + 1 < words.size() ? words[index + 1] : "";
        if (name == "--json" && !value.empty()) {
            arguments.json = value;
        } else if (name == "--rounds") {
            const char* const end = value.data() + value.size();
            const auto parsed = std::from_chars(value.data(), end, arguments.rounds);
            arguments.valid = arguments.valid && parsed.ptr == end && arguments.rounds > 0;
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
        std::fputs("usage: benchmark_desktop [--json FILE] [--rounds N]\n", stderr);
        return exitUnmeasured;
    }
    try {
        constexpr std::size_t windows = 200;
        constexpr int enumerations = 20;
        const SnapLatency snap = SnapLatency::measure(arguments.rounds);
        const Report report(snap, WindowEnumeration::measure(windows, enumerations));
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
