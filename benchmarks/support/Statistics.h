#pragma once

#include <vector>

namespace lumatile::benchmark {

/// What is reported of a series of times. Microseconds.
struct Statistics {
    int count = 0;
    double least = 0;
    double median = 0;
    double ninetieth = 0;  ///< 90 of 100 samples are at most this.
    double most = 0;

    /// @param samples at least one
    static Statistics of(std::vector<double> samples);
};

}  // namespace lumatile::benchmark
