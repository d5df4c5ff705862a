#include "oled_protection/StaticSampler.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace lumatile {
namespace {

TEST(StaticSampler, isADeclarationWithItsRecord) {
    EXPECT_TRUE(std::is_empty_v<StaticSampler>);
    EXPECT_TRUE(std::is_default_constructible_v<StaticSampler>);
    // The order of the fields is part of the record.
    const auto [rect, luminance, staticSeconds] = StaticSampler::Hotspot{{1, 2, 3, 4}, 0.5, 60};
    EXPECT_EQ(rect, (Rect{1, 2, 3, 4}));
    EXPECT_EQ(luminance, 0.5);
    EXPECT_EQ(staticSeconds, 60);
    EXPECT_NE((StaticSampler::Hotspot{{1, 2, 3, 4}, 0.5, 60}), StaticSampler::Hotspot{});
}

}  // namespace
}  // namespace lumatile
