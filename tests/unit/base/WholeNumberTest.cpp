#include "base/WholeNumber.h"

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace lumatile {
namespace {

TEST(WholeNumber, numbersWrittenWithPointOrExponentAreWholeWhenTheirValueIs) {
    struct Case {
        std::string text;
        std::uint64_t value;
    };
    const std::vector<Case> cases{
        {"12", 12},
        {"12.0", 12},
        {"12.000", 12},
        {"1e1", 10},
        {"1E+1", 10},
        {"1.2e1", 12},
        {"1200e-2", 12},
        {"0.012e3", 12},
        {"0", 0},
        {"0.0", 0},
        {"-0.0", 0},
        {"0e99", 0},
        {"0.00e-99", 0},
        {"18446744073709551615.0", UINT64_MAX},
        {"1844674407370955161.5e1", UINT64_MAX},
        {"1000000000000000000000e-3", 1'000'000'000'000'000'000},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(wholeNumber(each.text), WholeNumber{each.value}) << each.text;
    }
}

TEST(WholeNumber, negativeNumbersReachDownToTheSmallestOfSixtyFourBits) {
    EXPECT_EQ(wholeNumber("-12.0"), WholeNumber{std::int64_t{-12}});
    EXPECT_EQ(wholeNumber("-9223372036854775808.0"), WholeNumber{INT64_MIN});
    EXPECT_EQ(wholeNumber("-9.223372036854775808e18"), WholeNumber{INT64_MIN});
    EXPECT_FALSE(wholeNumber("-9223372036854775809.0"));
}

TEST(WholeNumber, fractionsAreNotWholeHoweverSmallTheyAre) {
    for (const std::string text :
         {"0.5", "12.5", "1e-1", "1.00000000000000000000000000001", "-0.1", "1e-400",
          "9007199254740991.4", "125e-2", "1e-999999999999999999999"}) {
        EXPECT_FALSE(wholeNumber(text)) << text;
    }
}

TEST(WholeNumber, numbersBeyondSixtyFourBitsAreAbsent) {
    for (const std::string text :
         {"18446744073709551616.0", "1e20", "1e308", "1e999999999", "1e99999999999999999999",
          "1e9223372036854775807", "100000000000000000000.0"}) {
        EXPECT_FALSE(wholeNumber(text)) << text;
    }
}

RC_GTEST_PROP(WholeNumber, anyIntegerIsReadBackFromItsShiftedDigits, (std::int32_t number)) {
    const auto places = *rc::gen::inRange<std::size_t>(0, 9);
    const std::string text =
        std::to_string(number) + std::string(places, '0') + "e-" + std::to_string(places);
    const WholeNumber expected = number < 0 ? WholeNumber{std::int64_t{number}}
                                            : WholeNumber{static_cast<std::uint64_t>(number)};
    RC_ASSERT(wholeNumber(text) == expected);
}

}  // namespace
}  // namespace lumatile
