#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>

#include "oled_protection/OrbitScheduler.h"
#include "tests/unit/oled_protection/FakeWindow.h"
#include "tests/unit/oled_protection/JitterClock.h"

/// Windows, policies and times of the tests of the scheduler, and what it remembers of a window.
namespace lumatile::orbit_stage {

inline constexpr Rect area{0, 0, 1920, 1080};
inline constexpr Rect inTheMiddle{500, 300, 700, 400};
inline constexpr Rect leftHalf{0, 0, 960, 1080};
inline constexpr OrbitConfig orbitOff{2, 1, false};
inline constexpr JitterPolicy hourly{3, 3600};

inline std::shared_ptr<FakeWindow> makeWindow(const Rect& frame = inTheMiddle, int id = 1) {
    return std::make_shared<FakeWindow>(id, frame);
}

/// Time of an hour in which the jitter is (+2, −1).
inline double jitteredTime() {
    static const std::optional<double> time = timeOfOffset(hourly, {2, -1});
    EXPECT_TRUE(time.has_value());
    return time.value_or(0);
}

inline Rect homeOf(const OrbitScheduler& orbit, const FakeWindow& window) {
    const std::optional<OrbitScheduler::Tracked> entry = orbit.tracked(window.key());
    EXPECT_TRUE(entry.has_value());
    return entry ? entry->home : Rect{-1, -1, -1, -1};
}

inline Rect lastAppliedOf(const OrbitScheduler& orbit, const FakeWindow& window) {
    const std::optional<OrbitScheduler::Tracked> entry = orbit.tracked(window.key());
    EXPECT_TRUE(entry.has_value());
    return entry ? entry->lastApplied : Rect{-1, -1, -1, -1};
}

}  // namespace lumatile::orbit_stage
