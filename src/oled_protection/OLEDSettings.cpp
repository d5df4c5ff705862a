#include "oled_protection/OLEDSettings.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "oled_protection/IntegerConversion.h"

namespace lumatile {

namespace {

// Nobody waits an hour to see what a setting does.
constexpr OrbitConfig exaggeratedOrbit{20, 5, true};
constexpr double exaggeratedOrbitInterval = 1;
constexpr double exaggeratedTolerancePx = 20;
constexpr double exaggeratedJitterSeconds = 10;

constexpr double shortestOrbitInterval = 1;
constexpr double jitterSeconds = 3600;

}  // namespace

std::string OLEDSettings::orbitStepIntervalLabel(double seconds) {
    if (seconds >= 60 && std::fmod(seconds, 60) == 0) {
        return std::to_string(IntegerConversion::truncated(seconds / 60)) + " min";
    }
    return std::to_string(IntegerConversion::truncated(seconds)) + " s";
}

OrbitConfig OLEDSettings::orbitConfig(bool exaggerated) const {
    OrbitConfig config = exaggerated ? exaggeratedOrbit : OrbitConfig{};
    if (!exaggerated) {
        config.radiusPx = std::clamp<std::int64_t>(IntegerConversion::rounded(orbitAmplitude), 1,
                                                   OrbitConfig::maximumRadiusPx);
    }
    config.enabled = orbitEnabled;
    return config;
}

double OLEDSettings::orbitInterval(bool exaggerated) const {
    if (exaggerated) {
        return exaggeratedOrbitInterval;
    }
    // Written so that a value that is no number ends at the floor as well.
    return orbitStepInterval > shortestOrbitInterval ? orbitStepInterval : shortestOrbitInterval;
}

JitterPolicy OLEDSettings::jitterPolicy(bool exaggerated) const {
    if (!jitterEnabled) {
        return {0, jitterSeconds};
    }
    return exaggerated ? JitterPolicy{exaggeratedTolerancePx, exaggeratedJitterSeconds}
                       : JitterPolicy{jitterTolerance, jitterSeconds};
}

}  // namespace lumatile
