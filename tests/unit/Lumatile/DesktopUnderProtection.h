#pragma once

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "tests/unit/Lumatile/DesktopWithConductor.h"

namespace lumatile {
inline constexpr Rect opened{300, 200, 640, 480};

/// A step every five seconds and nothing else, so that every pixel is foretold.
inline constexpr std::string_view shiftOnly =
    R"({"orbitAmplitude":1,"orbitStepInterval":5,"orbitWaitForPause":false,)"
    R"("jitterEnabled":false,"idleDimEnabled":false})";

inline constexpr std::string_view dimOnly = R"({"orbitEnabled":false,"jitterEnabled":false})";

/// The ring of radius 1 from its second point on, which is the first one taken.
inline const std::vector<Offset> ring{{0, -1}, {1, -1}, {1, 0},  {1, 1},
                                      {0, 1},  {-1, 1}, {-1, 0}, {-1, -1}};

struct DesktopUnderProtection : DesktopWithConductor {
    explicit DesktopUnderProtection(std::string_view settings = shiftOnly)
        : DesktopWithConductor(settings) {}

    const PanelProtection& protection() const { return conductor->protection(); }

    /// How far the window is from where it was opened.
    Offset shift(WindowID id, const Rect& from = opened) const {
        const Rect frame = this->frame(id).value_or(Rect{});
        EXPECT_EQ(frame.size(), from.size());
        return {frame.x - from.x, frame.y - from.y};
    }
};

}  // namespace lumatile
