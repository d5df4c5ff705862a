#include "oled_protection/IdleDimmer.h"

#include <algorithm>
#include <utility>

namespace lumatile {

namespace {

// So that a ramp of no length is no division by zero, seconds.
constexpr double shortestRamp = 0.001;

}  // namespace

IdleDimmer::IdleDimmer(const Config& initial, std::weak_ptr<DimSurface> surface,
                       IdleProvider idleProvider)
    : config(initial), surface_(std::move(surface)), idleProvider_(std::move(idleProvider)) {}

double IdleDimmer::level(double idleSeconds) const {
    // So put, an idle time that is not a number darkens nothing.
    const bool isIdle = idleSeconds > config.idleThreshold;
    if (!config.enabled || !isIdle) {
        return 0;
    }
    const double progress =
        (idleSeconds - config.idleThreshold) / std::max(config.rampSeconds, shortestRamp);
    return std::min(progress, 1.0) * config.maxLevel;
}

void IdleDimmer::tick() {
    if (const std::shared_ptr<DimSurface> surface = surface_.lock()) {
        surface->setLevel(level(idleProvider_()));
    }
}

}  // namespace lumatile
