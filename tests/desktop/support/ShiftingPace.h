#pragma once

#include <array>
#include <string_view>

#include "oled_protection/Offset.h"
#include "tests/desktop/support/PixelRect.h"

namespace lumatile::desktop {

/// The settings with which tests have windows shifted, and what these make of them.
struct ShiftingPace {
    /// A step every five seconds, round a ring of radius 2, and nothing else.
    static constexpr std::string_view shiftOnly =
        R"({"orbitStepInterval":5,"orbitWaitForPause":false,)"
        R"("jitterEnabled":false,"idleDimEnabled":false})";

    /// Edge jitter of up to 6 pixels at the same pace, and nothing else.
    static constexpr std::string_view jitterOnly =
        R"({"orbitEnabled":false,"orbitStepInterval":5,"orbitWaitForPause":false,)"
        R"("jitterTolerance":6,"idleDimEnabled":false})";

    /// Both.
    static constexpr std::string_view shiftAndJitter =
        R"({"orbitStepInterval":5,"orbitWaitForPause":false,)"
        R"("jitterTolerance":6,"idleDimEnabled":false})";

    static constexpr double interval = 5;  ///< Between steps, seconds.

    /// The ring from the point on that is taken first: clockwise from beside its top-left corner.
    static constexpr std::array<Offset, 16> ring{{{-1, -2},
                                                  {0, -2},
                                                  {1, -2},
                                                  {2, -2},
                                                  {2, -1},
                                                  {2, 0},
                                                  {2, 1},
                                                  {2, 2},
                                                  {1, 2},
                                                  {0, 2},
                                                  {-1, 2},
                                                  {-2, 2},
                                                  {-2, 1},
                                                  {-2, 0},
                                                  {-2, -1},
                                                  {-2, -2}}};
};

/// `frame` moved by an offset of the ring.
PixelRect shifted(const PixelRect& frame, const Offset& offset);

}  // namespace lumatile::desktop
