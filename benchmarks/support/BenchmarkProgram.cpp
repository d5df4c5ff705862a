#include "benchmarks/support/BenchmarkProgram.h"

#include <charconv>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <fstream>
#include <optional>
#include <span>
#include <string_view>

namespace lumatile::benchmark {

namespace {

constexpr int exitNotAsWanted = 1;
constexpr int exitUnmeasured = 2;

struct Arguments {
    std::string json;  // Empty for no file.
    int number = 0;
};

std::optional<Arguments> parse(std::span<char*> words, const NumberOption& option) {
    Arguments arguments{{}, option.value};
    for (std::size_t index = 1; index < words.size(); index += 2) {
        const std::string_view name = words[index];
        const std::string_view value = index + 1 < words.size() ? words[index + 1] : "";
        if (name == "--json" && !value.empty()) {
            arguments.json = value;
            continue;
        }
        const char* const end = value.data() + value.size();
        const auto parsed = std::from_chars(value.data(), end, arguments.number);
        if (name != option.name || parsed.ec != std::errc() || parsed.ptr != end ||
            arguments.number < option.least) {
            return std::nullopt;
        }
    }
    return arguments;
}

}  // namespace

int runBenchmark(int argc, char** argv, const NumberOption& option,
                 const std::function<Report(int)>& measure) {
    const std::span words(argv, static_cast<std::size_t>(argc));
    const std::optional<Arguments> arguments = parse(words, option);
    if (!arguments) {
        std::fprintf(stderr, "usage: %s [--json FILE] [%s N]\n", words[0], option.name.c_str());
        return exitUnmeasured;
    }
    try {
        const Report report = measure(arguments->number);
        std::fputs(report.table().c_str(), stdout);
        if (!arguments->json.empty()) {
            std::ofstream file(arguments->json);
            file << report.json();
            file.close();
            if (!file) {
                std::fprintf(stderr, "cannot write %s\n", arguments->json.c_str());
                return exitUnmeasured;
            }
        }
        return report.isAsWanted() ? 0 : exitNotAsWanted;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "not measured: %s\n", error.what());
        return exitUnmeasured;
    }
}

}  // namespace lumatile::benchmark
