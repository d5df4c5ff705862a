#pragma once

#include <functional>
#include <string>

#include "benchmarks/support/Report.h"

namespace lumatile::benchmark {

/// The one number that a benchmark takes on its command line.
struct NumberOption {
    std::string name;  ///< "--rounds"
    int value = 0;     ///< When it is not given.
    int least = 1;
};

/// What main of a benchmark does: reads `[--json FILE]` and the option, measures, prints the table
/// on standard output and writes the JSON.
/// @param measure is given the option's number; throws when something cannot be measured
/// @return the exit status: 1 when a figure is not as wanted, 2 when something was not measured
int runBenchmark(int argc, char** argv, const NumberOption& option,
                 const std::function<Report(int)>& measure);

}  // namespace lumatile::benchmark
