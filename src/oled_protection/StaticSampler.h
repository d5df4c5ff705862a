#pragma once

#include "geometry/Rect.h"

namespace lumatile {

/// Names the records of screen regions whose content stays unchanged and bright. A declaration
/// only: nothing samples the screen, and nothing depends on such records.
class StaticSampler {
public:
    struct Hotspot {
        Rect rect;                 ///< The region, screen coordinates.
        double luminance = 0;      ///< 0 dark to 1 bright.
        double staticSeconds = 0;  ///< For how long it has been unchanged.

        bool operator==(const Hotspot&) const = default;
    };
};

}  // namespace lumatile
