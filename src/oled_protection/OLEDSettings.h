#pragma once

#include <array>
#include <string>
#include <string_view>

#include "oled_protection/JitterPolicy.h"
#include "oled_protection/OrbitConfig.h"

namespace lumatile {

/// The one value that configures the protections against burn-in. Nothing is clamped here; what is
/// derived from it has floors of its own. The defaults of the fields are the recommended values.
struct OLEDSettings {
    /// Key of the preference that holds the settings.
    static constexpr std::string_view preferenceKey = "oledSettings";

    bool orbitEnabled = true;
    double orbitAmplitude = 2;       ///< Half the side of the orbit's square, pixels.
    double orbitStepInterval = 300;  ///< Seconds between two steps.
    bool orbitWaitForPause = true;   ///< Hold a step back until the user pauses.
    bool jitterEnabled = true;
    double jitterTolerance = 3;  ///< Largest shift of an edge, pixels.
    bool idleDimEnabled = true;
    double idleThreshold = 300;    ///< Seconds without input before the screens are dimmed.
    double idleDimStrength = 0.3;  ///< Fraction of full black, 0 to 1.

    bool operator==(const OLEDSettings&) const = default;

    /// What applies on first launch, after "Restore Recommended Settings" and wherever stored
    /// settings cannot be read.
    static const OLEDSettings recommended;

    /// The step intervals on offer, seconds.
    static constexpr std::array<double, 7> orbitStepIntervalChoices{5, 15, 30, 60, 120, 300, 600};

    /// An interval as its picker shows it: "2 min" for whole minutes, else whole seconds ("90 s").
    static std::string orbitStepIntervalLabel(double seconds);

    /// The orbit's shape. The radius is the rounded amplitude, at least 1 px; an amplitude that no
    /// stored settings can hold (not finite, over 10 000 px) is brought into that range.
    /// @param exaggerated the demonstration mode: large and fast enough to be watched
    OrbitConfig orbitConfig(bool exaggerated) const;

    /// Seconds between two steps, at least 1.
    double orbitInterval(bool exaggerated) const;

    /// The edge jitter; its tolerance is 0 where jitter is off.
    JitterPolicy jitterPolicy(bool exaggerated) const;
};

inline constexpr OLEDSettings OLEDSettings::recommended{};

}  // namespace lumatile
