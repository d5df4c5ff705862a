#include "oled_protection/IntegerConversion.h"

#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

namespace lumatile {
namespace {

using IntegerConversion::limit;
using IntegerConversion::rounded;
using IntegerConversion::truncated;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(IntegerConversion, roundsHalfAwayFromZero) {
    EXPECT_EQ(rounded(0.5), 1);
    EXPECT_EQ(rounded(-0.5), -1);
    EXPECT_EQ(rounded(2.5), 3);
    EXPECT_EQ(rounded(-2.5), -3);
    EXPECT_EQ(rounded(0.49999999999999994), 0);
    EXPECT_EQ(rounded(-0.2), 0);
}

TEST(IntegerConversion, truncatesTowardZero) {
    EXPECT_EQ(truncated(1.999), 1);
    EXPECT_EQ(truncated(-1.999), -1);
    EXPECT_EQ(truncated(-0.5), 0);
}

TEST(IntegerConversion, isDefinedForEveryDouble) {
    EXPECT_EQ(rounded(notANumber), 0);
    EXPECT_EQ(truncated(notANumber), 0);
    EXPECT_EQ(rounded(infinity), limit);
    EXPECT_EQ(truncated(-infinity), -limit);
    EXPECT_EQ(rounded(1e300), limit);
    EXPECT_EQ(rounded(-0x1p63), -limit);
}

TEST(IntegerConversion, limitIsTheLargestDoubleBelowTheIntegersEnd) {
    EXPECT_EQ(static_cast<std::int64_t>(static_cast<double>(limit)), limit);
    EXPECT_EQ(truncated(0x1.fffffffffffffp62), limit);
    EXPECT_EQ(truncated(0x1.ffffffffffffep62), limit - 1024);
}

}  // namespace
}  // namespace lumatile
