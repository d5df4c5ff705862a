#include "platform/x11/X11GammaRamp.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace lumatile {

X11GammaRamp X11GammaRamp::dimmed(double opacity) const {
    X11GammaRamp result;
    result.steps.reserve(steps.size());
    std::transform(steps.begin(), steps.end(), std::back_inserter(result.steps),
                   [factor = 1 - opacity](std::uint16_t step) {
                       return static_cast<std::uint16_t>(std::lround(step * factor));
                   });
    return result;
}

bool X11GammaRamp::isDimmed(const X11GammaRamp& original) const {
    if (steps.size() != original.steps.size()) {
        return false;
    }
    // Each step leaves a range of factors that round to it. Where all ranges meet there is a factor
    // that makes the whole ramp.
    constexpr double rounding = 0.5;
    // At the border between two steps the ranges of both touch, and a product that is not exact may
    // fall on either side. A range is 1e-5 wide or more.
    constexpr double slack = 1e-12;
    double least = 0;
    double most = 1;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const double from = original.steps[i];
        const double to = steps[i];
        if (from == 0) {
            if (to != 0) {
                return false;
            }
            continue;
        }
        least = std::max(least, (to - rounding) / from);
        most = std::min(most, (to + rounding) / from);
    }
    return least <= most + slack;
}

}  // namespace lumatile
