#include "benchmarks/settings/SettingsTimes.h"

#include <cstdio>
#include <string>
#include <vector>

#include "benchmarks/settings/MeasuredProgram.h"

namespace lumatile::benchmark {

namespace {

class Samples {
public:
    void take(MeasuredProgram& measured, const std::string& program) {
        start_.push_back(measured.start(program));
        first_.push_back(measured.open());
        measured.close();
        second_.push_back(measured.open());
        measured.stop();
    }

    SettingsTimes times() const {
        return {Statistics::of(start_), Statistics::of(first_), Statistics::of(second_)};
    }

private:
    std::vector<double> start_;
    std::vector<double> first_;
    std::vector<double> second_;
};

}  // namespace

SettingsTimes::Pair SettingsTimes::measure(int rounds) {
    std::fprintf(stderr, "starting and opening: %d rounds\n", rounds);
    MeasuredProgram measured;
    // The first of each reads files that the others find in memory.
    Samples().take(measured, LUMATILE_PROGRAM);
    Samples().take(measured, BARE_PROGRAM);
    Samples ours;
    Samples bare;
    for (int round = 0; round < rounds; ++round) {
        ours.take(measured, LUMATILE_PROGRAM);
        bare.take(measured, BARE_PROGRAM);
    }
    return {ours.times(), bare.times()};
}

}  // namespace lumatile::benchmark
