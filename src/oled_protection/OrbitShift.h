#pragma once

#include "oled_protection/Offset.h"

namespace lumatile {

/// A step of the orbit that moved at least one window.
struct OrbitShift {
    Offset offset;  ///< From a window's home, pixels; zero where only the edge jitter moved it.
    double at = 0;  ///< Seconds since 1970-01-01 00:00 UTC.

    bool operator==(const OrbitShift&) const = default;
};

}  // namespace lumatile
