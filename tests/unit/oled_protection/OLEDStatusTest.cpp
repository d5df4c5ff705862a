#include "oled_protection/OLEDStatus.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace lumatile {
namespace {

using OLEDStatus::edgeJitterLine;
using OLEDStatus::idleDimLine;
using OLEDStatus::pixelShiftLine;

constexpr double now = 1'700'000'000;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

OrbitShift shift(double dx, double dy, double secondsAgo) { return {{dx, dy}, now - secondsAgo}; }

// The typographic characters are written as bytes: E2 88 92 is the minus sign, E2 80 94 the em
// dash, C2 B7 the middle dot.

TEST(PixelShiftLine, off) {
    EXPECT_EQ(pixelShiftLine(false, 3, shift(1, 1, 5), now, false), "Pixel shift: off");
    EXPECT_EQ(pixelShiftLine(false, 0, std::nullopt, now, false), "Pixel shift: off");
}

TEST(PixelShiftLine, onWithoutWindowsWhetherOrNotAShiftHappened) {
    const std::string expected = "Pixel shift: on \xE2\x80\x94 starts at the next step";
    EXPECT_EQ(pixelShiftLine(true, 0, std::nullopt, now, false), expected);
    EXPECT_EQ(pixelShiftLine(true, 0, shift(1, 1, 5), now, false), expected);
}

TEST(PixelShiftLine, onWithWindowsAndNoShiftYet) {
    EXPECT_EQ(pixelShiftLine(true, 1, std::nullopt, now, false),
              "Pixel shift: on \xC2\xB7 1 window");
    EXPECT_EQ(pixelShiftLine(true, 3, std::nullopt, now, false),
              "Pixel shift: on \xC2\xB7 3 windows");
}

TEST(PixelShiftLine, afterAShift) {
    EXPECT_EQ(pixelShiftLine(true, 3, shift(1, -2, 250), now, false),
              "Pixel shift: 4m ago (+1, \xE2\x88\x92"
              "2) \xC2\xB7 3 windows");
    EXPECT_EQ(pixelShiftLine(true, 1, shift(-2, 0, 61), now, false),
              "Pixel shift: 1m ago (\xE2\x88\x92"
              "2, 0) \xC2\xB7 1 window");
}

TEST(PixelShiftLine, ages) {
    struct Case {
        double seconds;
        std::string age;
    };
    for (const Case& c :
         {Case{0, "just now"}, Case{0.875, "just now"}, Case{-30, "just now"}, Case{1, "1s ago"},
          Case{42, "42s ago"}, Case{59.875, "59s ago"}, Case{60, "1m ago"}, Case{119, "1m ago"},
          Case{120, "2m ago"}, Case{7200, "120m ago"}}) {
        EXPECT_EQ(pixelShiftLine(true, 2, shift(0, 0, c.seconds), now, false),
                  "Pixel shift: " + c.age + " (0, 0) \xC2\xB7 2 windows");
    }
}

TEST(PixelShiftLine, pixelsAreRoundedHalfAwayFromZero) {
    EXPECT_EQ(pixelShiftLine(true, 2, shift(0.5, -0.5, 0), now, false),
              "Pixel shift: just now (+1, \xE2\x88\x92"
              "1) \xC2\xB7 2 windows");
    EXPECT_EQ(pixelShiftLine(true, 2, shift(0.4, -0.4, 0), now, false),
              "Pixel shift: just now (0, 0) \xC2\xB7 2 windows");
}

TEST(PixelShiftLine, exaggeratedIsMarkedInEveryCase) {
    const std::string mark = " \xC2\xB7 DEBUG";
    EXPECT_EQ(pixelShiftLine(false, 0, std::nullopt, now, true), "Pixel shift: off" + mark);
    for (const std::size_t count : {std::size_t{0}, std::size_t{1}, std::size_t{7}}) {
        EXPECT_EQ(pixelShiftLine(true, count, std::nullopt, now, true),
                  pixelShiftLine(true, count, std::nullopt, now, false) + mark);
        EXPECT_EQ(pixelShiftLine(true, count, shift(5, 5, 3), now, true),
                  pixelShiftLine(true, count, shift(5, 5, 3), now, false) + mark);
    }
}

TEST(EdgeJitterLine, off) { EXPECT_EQ(edgeJitterLine(false, 2, -3), "Edge jitter: off"); }

TEST(EdgeJitterLine, withoutAShiftThisHour) {
    EXPECT_EQ(edgeJitterLine(true, 0, 0), "Edge jitter: on \xE2\x80\x94 no shift this hour");
    EXPECT_EQ(edgeJitterLine(true, -0.0, 0), "Edge jitter: on \xE2\x80\x94 no shift this hour");
}

TEST(EdgeJitterLine, withAShift) {
    EXPECT_EQ(edgeJitterLine(true, 2, -3),
              "Edge jitter: inner edges shifted (+2, \xE2\x88\x92"
              "3) this hour");
    EXPECT_EQ(edgeJitterLine(true, 0, -1),
              "Edge jitter: inner edges shifted (0, \xE2\x88\x92"
              "1) this hour");
}

TEST(IdleDimLine, off) { EXPECT_EQ(idleDimLine(false, 0.3, 300), "Idle dim: off"); }

TEST(IdleDimLine, percentAndDuration) {
    struct Case {
        double strength;
        double seconds;
        std::string text;
    };
    for (const Case& c : {Case{0.3, 300, "30% after 5 min"}, Case{0.35, 90, "35% after 1m 30s"},
                          Case{0.3, 15, "30% after 15s"}, Case{0.3, 59.4, "30% after 59s"},
                          Case{0.3, 59.5, "30% after 1 min"}, Case{0.3, 60, "30% after 1 min"},
                          Case{0.3, 61, "30% after 1m 1s"}, Case{0.3, 7200, "30% after 120 min"},
                          Case{0.29, 60, "29% after 1 min"}, Case{0.005, 60, "1% after 1 min"},
                          Case{0.0, 0, "0% after 0s"}, Case{1, 1800, "100% after 30 min"}}) {
        EXPECT_EQ(idleDimLine(true, c.strength, c.seconds), "Idle dim: " + c.text + " idle");
    }
}

TEST(OLEDStatus, valuesThatAreNotFiniteHaveALineToo) {
    EXPECT_EQ(pixelShiftLine(true, 2, OrbitShift{{notANumber, 0}, notANumber}, now, false),
              "Pixel shift: just now (0, 0) \xC2\xB7 2 windows");
    EXPECT_EQ(pixelShiftLine(true, 2, OrbitShift{{0, 0}, -infinity}, now, false),
              "Pixel shift: 153722867280912913m ago (0, 0) \xC2\xB7 2 windows");
    EXPECT_EQ(edgeJitterLine(true, -infinity, notANumber),
              "Edge jitter: inner edges shifted (\xE2\x88\x92"
              "9223372036854774784, 0) this hour");
    EXPECT_EQ(idleDimLine(true, notANumber, notANumber), "Idle dim: 0% after 0s idle");
}

}  // namespace
}  // namespace lumatile
