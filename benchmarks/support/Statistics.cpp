#include "benchmarks/support/Statistics.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace lumatile::benchmark {

Statistics Statistics::of(std::vector<double> samples) {
    std::sort(samples.begin(), samples.end());
    const std::size_t count = samples.size();
    const std::size_t middle = count / 2;
    Statistics result;
    result.count = static_cast<int>(count);
    result.least = samples.front();
    result.median = count % 2 == 1 ? samples[middle] : (samples[middle - 1] + samples[middle]) / 2;
    const auto rank = static_cast<std::size_t>(std::ceil(0.9 * static_cast<double>(count)));
    result.ninetieth = samples[rank - 1];
    result.most = samples.back();
    return result;
}

}  // namespace lumatile::benchmark
