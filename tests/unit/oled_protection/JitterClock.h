#pragma once

#include <optional>

#include "oled_protection/JitterPolicy.h"

namespace lumatile {

/// The offsets repeat after this many slots, as only 16 bits of the slot number reach them.
inline constexpr int slotsUntilRepeat = 65'536;

/// A time at which `policy` has this offset; absent when it never has.
inline std::optional<double> timeOfOffset(const JitterPolicy& policy, const Offset& wanted) {
    for (int slot = 0; slot < slotsUntilRepeat; ++slot) {
        const double time = slot * policy.stepSeconds + policy.stepSeconds / 2;
        if (policy.offset(time) == wanted) {
            return time;
        }
    }
    return std::nullopt;
}

}  // namespace lumatile
