#include "benchmarks/support/ProcessFigures.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::benchmark {

namespace {

using desktop::DesktopError;

constexpr double nanosecond = 1e-9;

// The number behind "name:" in a file of lines.
std::uint64_t numberNamed(const std::filesystem::path& file, std::string_view name) {
    std::ifstream stream(file);
    std::string word;
    std::uint64_t number = 0;
    while (stream >> word) {
        if (word == name && stream >> number) {
            return number;
        }
    }
    throw DesktopError("no " + std::string(name) + " in " + file.string());
}

}  // namespace

ProcessFigures ProcessFigures::of(pid_t process) {
    const std::filesystem::path folder = "/proc/" + std::to_string(process);
    ProcessFigures figures;
    for (const auto& thread : std::filesystem::directory_iterator(folder / "task")) {
        const std::uint64_t wakeUps =
            numberNamed(thread.path() / "status", "voluntary_ctxt_switches:");
        figures.wakeUps += wakeUps;
        figures.wakeUpsOfThreads[thread.path().filename()] = wakeUps;
        // Its first number is the time on a processor; the ticks of "stat" are too coarse here.
        std::ifstream schedule(thread.path() / "schedstat");
        double nanoseconds = 0;
        if (!(schedule >> nanoseconds)) {
            throw DesktopError("the system does not count processor time");
        }
        figures.processorSeconds += nanoseconds * nanosecond;
    }
    figures.residentKiB = numberNamed(folder / "smaps_rollup", "Rss:");
    figures.proportionalKiB = numberNamed(folder / "smaps_rollup", "Pss:");
    return figures;
}

std::uint64_t ProcessFigures::wakeUpsSince(const ProcessFigures& before) const {
    std::uint64_t sum = 0;
    for (const auto& [thread, now] : wakeUpsOfThreads) {
        const auto found = before.wakeUpsOfThreads.find(thread);
        sum += now - (found != before.wakeUpsOfThreads.end() ? found->second : 0);
    }
    return sum;
}

}  // namespace lumatile::benchmark
