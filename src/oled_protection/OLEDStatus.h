#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "oled_protection/OrbitShift.h"

/// The lines at the top of the status menu, one for each protection. UTF-8. Every number is a whole
/// one there; a value that is not finite shows as 0, or as the largest number of its sign.
namespace lumatile::OLEDStatus {

/// What the pixel shift did last, and to how many windows.
/// @param windowCount windows that the orbit tracks
/// @param now seconds since 1970-01-01 00:00 UTC
std::string pixelShiftLine(bool enabled, std::size_t windowCount,
                           const std::optional<OrbitShift>& lastShift, double now,
                           bool exaggerated);

/// The edge jitter's offset of this time slot, pixels.
std::string edgeJitterLine(bool enabled, double dx, double dy);

/// How far and when the screens are dimmed.
/// @param strength fraction of full black
/// @param thresholdSeconds the threshold in force, also while it is exaggerated
std::string idleDimLine(bool enabled, double strength, double thresholdSeconds);

}  // namespace lumatile::OLEDStatus
