#pragma once

#include <functional>
#include <memory>

#include "oled_protection/DimSurface.h"

namespace lumatile {

/// Dims the screens gradually once there has been no input for a while, and
/// clears them at the first input. It does no timing of its own: whoever owns it calls `tick`.
class IdleDimmer {
public:
    struct Config {
        double idleThreshold = 0;  ///< Seconds without input; dimming begins after them.
        double maxLevel = 0;       ///< The last level, fraction of full black.
        double rampSeconds = 0;    ///< Seconds from the first darkening to the last level.
        bool enabled = false;

        bool operator==(const Config&) const = default;
    };

    /// Seconds since the last input of the user.
    using IdleProvider = std::function<double()>;

    /// @param surface nothing is darkened once it is gone
    IdleDimmer(const Config& initial, std::weak_ptr<DimSurface> surface, IdleProvider idleProvider);

    Config config;  ///< In force from the next tick on.

    /// The level that belongs to so many seconds without input. A ramp of no length reaches the
    /// last level at once.
    double level(double idleSeconds) const;

    /// Gives the surface the level of this moment.
    void tick();

private:
    std::weak_ptr<DimSurface> surface_;
    IdleProvider idleProvider_;
};

}  // namespace lumatile
