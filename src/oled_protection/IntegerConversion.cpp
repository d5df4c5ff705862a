#include "oled_protection/IntegerConversion.h"

#include <algorithm>
#include <cmath>

namespace lumatile::IntegerConversion {

std::int64_t truncated(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    constexpr auto bound = static_cast<double>(limit);
    return static_cast<std::int64_t>(std::clamp(value, -bound, bound));
}

std::int64_t rounded(double value) { return truncated(std::round(value)); }

}  // namespace lumatile::IntegerConversion
