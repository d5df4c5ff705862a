#include "platform/x11/X11GammaRamp.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <vector>

namespace lumatile {
namespace {

using Steps = std::vector<std::uint16_t>;

TEST(X11GammaRamp, dimmingScalesEveryStepAndRounds) {
    const X11GammaRamp ramp{{0, 1, 2, 3, 32768, 65535}};
    EXPECT_EQ(ramp.size(), 2U);
    EXPECT_EQ(ramp.dimmed(0).steps, ramp.steps);
    EXPECT_EQ(ramp.dimmed(0.5).steps, (Steps{0, 1, 1, 2, 16384, 32768}));
    EXPECT_EQ(ramp.dimmed(0.3).steps, (Steps{0, 1, 1, 2, 22938, 45875}));
    EXPECT_EQ(ramp.dimmed(1).steps, (Steps{0, 0, 0, 0, 0, 0}));
}

RC_GTEST_PROP(X11GammaRamp, whatWasDimmedIsRecognised, (const Steps& steps)) {
    const double opacity = *rc::gen::inRange(0, 100001) / 100000.0;
    const X11GammaRamp original{steps};
    RC_ASSERT(original.dimmed(opacity).isDimmed(original));
}

TEST(X11GammaRamp, whatSomebodyElseSetIsNot) {
    const X11GammaRamp original{{0, 30000, 60000, 0, 30000, 60000, 0, 30000, 60000}};
    const std::vector<Steps> others = {
        {0, 30000, 60000, 0, 28000, 56000, 0, 20000, 40000},  // Warmer.
        {0, 15000, 30000, 0, 15000, 30000, 0, 15000, 30002},  // One step a little off.
        {1, 15000, 30000, 0, 15000, 30000, 0, 15000, 30000},  // Black is no more.
        {0, 32000, 64000, 0, 32000, 64000, 0, 32000, 64000},  // Brighter.
        {0, 30000, 0, 30000, 0, 30000},                       // Another size.
        {},
    };
    for (const Steps& steps : others) {
        EXPECT_FALSE((X11GammaRamp{steps}.isDimmed(original))) << testing::PrintToString(steps);
    }
    EXPECT_TRUE(
        (X11GammaRamp{{0, 15000, 30000, 0, 15000, 30000, 0, 15000, 30000}}.isDimmed(original)));
    EXPECT_TRUE(original.isDimmed(original));
}

}  // namespace
}  // namespace lumatile
