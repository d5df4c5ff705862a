#pragma once

#include <cstdint>

namespace lumatile {

/// The shape of the square on which windows walk round their homes.
struct OrbitConfig {
    /// A larger radius counts as this one. It keeps a path within a few megabytes, and no screen
    /// has room for more.
    static constexpr std::int64_t maximumRadiusPx = 10'000;

    std::int64_t radiusPx = 2;  ///< Half the side of the square, pixels.
    std::int64_t stridePx = 1;  ///< Pixels from one step to the next along a side.
    bool enabled = true;

    bool operator==(const OrbitConfig&) const = default;
};

}  // namespace lumatile
