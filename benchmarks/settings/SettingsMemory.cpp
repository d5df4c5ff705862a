#include "benchmarks/settings/SettingsMemory.h"

#include <chrono>
#include <cstdio>
#include <thread>

#include "benchmarks/settings/MeasuredProgram.h"

namespace lumatile::benchmark {

namespace {

// Until the program has come to rest: nothing tells when.
constexpr std::chrono::seconds restTime{2};

std::uint64_t proportionalAtRest(const MeasuredProgram& measured) {
    std::this_thread::sleep_for(restTime);
    return measured.figures().proportionalKiB;
}

}  // namespace

SettingsMemory SettingsMemory::measure(int times) {
    std::fprintf(stderr, "memory: the window opened %d times\n", times);
    MeasuredProgram measured;
    SettingsMemory memory;
    memory.times = times;
    measured.start(BARE_PROGRAM);
    memory.bare = proportionalAtRest(measured);
    measured.stop();
    measured.start(LUMATILE_PROGRAM);
    memory.neverOpened = proportionalAtRest(measured);
    measured.open();
    memory.open = proportionalAtRest(measured);
    measured.close();
    memory.closed = proportionalAtRest(measured);
    measured.open();
    measured.close();
    memory.closedTwice = proportionalAtRest(measured);
    for (int opened = 2; opened < times; ++opened) {
        measured.open();
        measured.close();
    }
    memory.closedOften = proportionalAtRest(measured);
    measured.stop();
    return memory;
}

}  // namespace lumatile::benchmark
