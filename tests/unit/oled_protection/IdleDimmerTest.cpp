#include "oled_protection/IdleDimmer.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace lumatile {
namespace {

class RecordedSurface final : public DimSurface {
public:
    void setLevel(double level) override { levels.push_back(level); }

    std::vector<double> levels;
};

IdleDimmer dimmer(const IdleDimmer::Config& config) {
    return {config, std::weak_ptr<DimSurface>(), [] { return 0.0; }};
}

constexpr IdleDimmer::Config usual{300, 0.3, 5, true};

TEST(IdleDimmer, isClearWhileSwitchedOff) {
    IdleDimmer::Config off = usual;
    off.enabled = false;
    for (const double idle : {0.0, 301.0, 1e9, std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(dimmer(off).level(idle), 0) << idle;
    }
}

TEST(IdleDimmer, risesFromTheThresholdToTheLastLevel) {
    const IdleDimmer rising = dimmer(usual);
    EXPECT_EQ(rising.level(0), 0);
    EXPECT_EQ(rising.level(299), 0);
    EXPECT_EQ(rising.level(300), 0) << "only after the threshold";
    EXPECT_DOUBLE_EQ(rising.level(302.5), 0.15);
    EXPECT_DOUBLE_EQ(rising.level(305), 0.3);
    EXPECT_DOUBLE_EQ(rising.level(400), 0.3);
}

TEST(IdleDimmer, withoutARampReachesTheLastLevelAtOnce) {
    for (const double ramp : {0.0, -5.0}) {
        const IdleDimmer sudden = dimmer({300, 0.3, ramp, true});
        EXPECT_EQ(sudden.level(300), 0);
        EXPECT_DOUBLE_EQ(sudden.level(300.002), 0.3);
        EXPECT_DOUBLE_EQ(sudden.level(301), 0.3);
    }
}

TEST(IdleDimmer, anIdleTimeThatIsNoNumberDarkensNothing) {
    EXPECT_EQ(dimmer(usual).level(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(dimmer(usual).level(-1), 0);
    EXPECT_DOUBLE_EQ(dimmer(usual).level(std::numeric_limits<double>::infinity()), 0.3);
}

TEST(IdleDimmer, givesTheSurfaceTheLevelOfTheMoment) {
    const auto surface = std::make_shared<RecordedSurface>();
    double idle = 0;
    IdleDimmer dimmer(usual, surface, [&] { return idle; });
    EXPECT_TRUE(surface->levels.empty());
    dimmer.tick();
    idle = 302.5;
    dimmer.tick();
    idle = 1;
    dimmer.tick();
    EXPECT_EQ(surface->levels, (std::vector<double>{0, 0.15, 0}));
}

TEST(IdleDimmer, aNewConfigHoldsFromTheNextTick) {
    const auto surface = std::make_shared<RecordedSurface>();
    IdleDimmer dimmer(usual, surface, [] { return 400.0; });
    dimmer.tick();
    dimmer.config = {300, 0.5, 5, true};
    dimmer.tick();
    dimmer.config.enabled = false;
    dimmer.tick();
    EXPECT_EQ(surface->levels, (std::vector<double>{0.3, 0.5, 0}));
}

TEST(IdleDimmer, withoutItsSurfaceATickDoesNothing) {
    auto surface = std::make_shared<RecordedSurface>();
    int asked = 0;
    IdleDimmer dimmer(usual, surface, [&] {
        ++asked;
        return 400.0;
    });
    dimmer.tick();
    EXPECT_EQ(asked, 1);
    surface.reset();
    dimmer.tick();
    EXPECT_EQ(asked, 1);
}

RC_GTEST_PROP(IdleDimmerProperty, levelsRiseWithTheIdleTimeAndStayInBounds, ()) {
    const IdleDimmer::Config config{*rc::gen::inRange(1, 4000) / 2.0,
                                    *rc::gen::inRange(0, 101) / 100.0,
                                    *rc::gen::inRange(0, 200) / 10.0, true};
    const IdleDimmer dim = dimmer(config);
    double before = 0;
    for (double idle = 0; idle < config.idleThreshold + 2 * config.rampSeconds + 2; idle += 0.5) {
        const double level = dim.level(idle);
        RC_ASSERT(level >= before);
        RC_ASSERT(level <= config.maxLevel);
        RC_ASSERT((level == 0) == (idle <= config.idleThreshold || config.maxLevel == 0));
        before = level;
    }
    RC_ASSERT(before == config.maxLevel);
}

}  // namespace
}  // namespace lumatile
