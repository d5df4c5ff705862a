#include "oled_protection/OLEDStatus.h"

#include <cstdint>

#include "oled_protection/IntegerConversion.h"

namespace lumatile::OLEDStatus {

namespace {

// Spelled out: these look like, but are not, the ASCII hyphen.
constexpr const char* minusSign = "\u2212";
constexpr const char* dash = " \u2014 ";
constexpr const char* middleDot = " \u00B7 ";

std::string signedPixels(double pixels) {
    const std::int64_t count = IntegerConversion::rounded(pixels);
    if (count == 0) {
        return "0";
    }
    return count > 0 ? "+" + std::to_string(count) : minusSign + std::to_string(-count);
}

std::string pair(double dx, double dy) {
    return "(" + signedPixels(dx) + ", " + signedPixels(dy) + ")";
}

/// A shift later than `now` (the clock was set back) counts as having happened just now.
std::string age(double at, double now) {
    const std::int64_t seconds = IntegerConversion::truncated(now - at);
    if (seconds < 1) {
        return "just now";
    }
    return seconds < 60 ? std::to_string(seconds) + "s ago"
                        : std::to_string(seconds / 60) + "m ago";
}

std::string duration(double value) {
    const std::int64_t seconds = IntegerConversion::rounded(value);
    if (seconds < 60) {
        return std::to_string(seconds) + "s";
    }
    if (seconds % 60 == 0) {
        return std::to_string(seconds / 60) + " min";
    }
    return std::to_string(seconds / 60) + "m " + std::to_string(seconds % 60) + "s";
}

std::string windows(std::size_t count) {
    return count == 1 ? "1 window" : std::to_string(count) + " windows";
}

std::string pixelShift(bool enabled, std::size_t windowCount,
                       const std::optional<OrbitShift>& lastShift, double now) {
    const std::string title = "Pixel shift: ";
    if (!enabled) {
        return title + "off";
    }
    if (windowCount == 0) {
        return title + "on" + dash + "starts at the next step";
    }
    if (!lastShift) {
        return title + "on" + middleDot + windows(windowCount);
    }
    return title + age(lastShift->at, now) + " " +
           pair(lastShift->offset.dx, lastShift->offset.dy) + middleDot + windows(windowCount);
}

}  // namespace

std::string pixelShiftLine(bool enabled, std::size_t windowCount,
                           const std::optional<OrbitShift>& lastShift, double now,
                           bool exaggerated) {
    std::string line = pixelShift(enabled, windowCount, lastShift, now);
    return exaggerated ? line + middleDot + "DEBUG" : line;
}

std::string edgeJitterLine(bool enabled, double dx, double dy) {
    const std::string title = "Edge jitter: ";
    if (!enabled) {
        return title + "off";
    }
    if (dx == 0 && dy == 0) {
        return title + "on" + dash + "no shift this hour";
    }
    return title + "inner edges shifted " + pair(dx, dy) + " this hour";
}

std::string idleDimLine(bool enabled, double strength, double thresholdSeconds) {
    const std::string title = "Idle dim: ";
    if (!enabled) {
        return title + "off";
    }
    return title + std::to_string(IntegerConversion::rounded(strength * 100)) + "% after " +
           duration(thresholdSeconds) + " idle";
}

}  // namespace lumatile::OLEDStatus
