#include "oled_protection/OLEDSettings.h"

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lumatile {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

OLEDSettings withAmplitude(double amplitude) {
    OLEDSettings settings;
    settings.orbitAmplitude = amplitude;
    return settings;
}

OLEDSettings withInterval(double seconds) {
    OLEDSettings settings;
    settings.orbitStepInterval = seconds;
    return settings;
}

TEST(OLEDSettings, recommendedValues) {
    const OLEDSettings& settings = OLEDSettings::recommended;
    EXPECT_TRUE(settings.orbitEnabled);
    EXPECT_EQ(settings.orbitAmplitude, 2.0);
    EXPECT_EQ(settings.orbitStepInterval, 300.0);
    EXPECT_TRUE(settings.orbitWaitForPause);
    EXPECT_TRUE(settings.jitterEnabled);
    EXPECT_EQ(settings.jitterTolerance, 3.0);
    EXPECT_TRUE(settings.idleDimEnabled);
    EXPECT_EQ(settings.idleThreshold, 300.0);
    EXPECT_EQ(settings.idleDimStrength, 0.3);
    EXPECT_EQ(settings, OLEDSettings{});
}

TEST(OLEDSettings, equalityLooksAtEveryField) {
    std::vector<OLEDSettings> others(9);
    others[0].orbitEnabled = false;
    others[1].orbitAmplitude = 4;
    others[2].orbitStepInterval = 60;
    others[3].orbitWaitForPause = false;
    others[4].jitterEnabled = false;
    others[5].jitterTolerance = 1;
    others[6].idleDimEnabled = false;
    others[7].idleThreshold = 60;
    others[8].idleDimStrength = 0.5;
    for (const OLEDSettings& other : others) {
        EXPECT_NE(other, OLEDSettings::recommended);
    }
}

TEST(OLEDSettings, sevenStepIntervalsAndTheirLabels) {
    const std::vector<std::string> labels{"5 s",   "15 s",  "30 s",  "1 min",
                                          "2 min", "5 min", "10 min"};
    std::vector<std::string> shown;
    shown.reserve(labels.size());
    for (const double seconds : OLEDSettings::orbitStepIntervalChoices) {
        shown.push_back(OLEDSettings::orbitStepIntervalLabel(seconds));
    }
    EXPECT_EQ(shown, labels);
    EXPECT_EQ(OLEDSettings::orbitStepIntervalChoices,
              (std::array<double, 7>{5, 15, 30, 60, 120, 300, 600}));
}

TEST(OLEDSettings, labelsOfOtherIntervalsShowWholeSeconds) {
    EXPECT_EQ(OLEDSettings::orbitStepIntervalLabel(90), "90 s");
    EXPECT_EQ(OLEDSettings::orbitStepIntervalLabel(59), "59 s");
    EXPECT_EQ(OLEDSettings::orbitStepIntervalLabel(0), "0 s");
    EXPECT_EQ(OLEDSettings::orbitStepIntervalLabel(7.9), "7 s");
    EXPECT_EQ(OLEDSettings::orbitStepIntervalLabel(60.5), "60 s");
    EXPECT_EQ(OLEDSettings::orbitStepIntervalLabel(7200), "120 min");
    EXPECT_EQ(OLEDSettings::orbitStepIntervalLabel(notANumber), "0 s");
}

TEST(OLEDSettings, orbitRadiusIsTheRoundedAmplitudeAndAtLeastOne) {
    struct Case {
        double amplitude;
        std::int64_t radius;
    };
    for (const Case& c : {Case{2, 2}, Case{2.5, 3}, Case{2.49, 2}, Case{0.2, 1}, Case{0, 1},
                          Case{-4, 1}, Case{6, 6}, Case{10'000, 10'000}}) {
        EXPECT_EQ(withAmplitude(c.amplitude).orbitConfig(false), (OrbitConfig{c.radius, 1, true}))
            << c.amplitude;
    }
}

TEST(OLEDSettings, amplitudesThatNoStoredSettingsHoldGiveABoundedRadius) {
    EXPECT_EQ(withAmplitude(notANumber).orbitConfig(false).radiusPx, 1);
    EXPECT_EQ(withAmplitude(-infinity).orbitConfig(false).radiusPx, 1);
    EXPECT_EQ(withAmplitude(infinity).orbitConfig(false).radiusPx, OrbitConfig::maximumRadiusPx);
    EXPECT_EQ(withAmplitude(1e300).orbitConfig(false).radiusPx, OrbitConfig::maximumRadiusPx);
}

TEST(OLEDSettings, exaggeratedOrbitIsLargeAndFastWhateverTheAmplitude) {
    EXPECT_EQ(withAmplitude(6).orbitConfig(true), (OrbitConfig{20, 5, true}));
}

TEST(OLEDSettings, orbitIsEnabledAsTheSettingSaysInBothModes) {
    OLEDSettings settings;
    settings.orbitEnabled = false;
    EXPECT_EQ(settings.orbitConfig(false), (OrbitConfig{2, 1, false}));
    EXPECT_EQ(settings.orbitConfig(true), (OrbitConfig{20, 5, false}));
}

TEST(OLEDSettings, orbitIntervalIsAtLeastOneSecond) {
    EXPECT_EQ(OLEDSettings::recommended.orbitInterval(false), 300);
    EXPECT_EQ(withInterval(0.5).orbitInterval(false), 1);
    EXPECT_EQ(withInterval(-7).orbitInterval(false), 1);
    EXPECT_EQ(withInterval(1.25).orbitInterval(false), 1.25);
    EXPECT_EQ(withInterval(notANumber).orbitInterval(false), 1);
    EXPECT_EQ(withInterval(300).orbitInterval(true), 1);
}

TEST(OLEDSettings, jitterPolicyInEachMode) {
    OLEDSettings settings;
    settings.jitterTolerance = 4.5;
    EXPECT_EQ(settings.jitterPolicy(false), (JitterPolicy{4.5, 3600}));
    EXPECT_EQ(settings.jitterPolicy(true), (JitterPolicy{20, 10}));
    settings.jitterEnabled = false;
    EXPECT_EQ(settings.jitterPolicy(false), (JitterPolicy{0, 3600}));
    EXPECT_EQ(settings.jitterPolicy(true), (JitterPolicy{0, 3600}));
}

}  // namespace
}  // namespace lumatile
