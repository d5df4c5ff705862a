#include "platform/x11/X11Struts.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

namespace lumatile {

void PrintTo(const Rect& rect, std::ostream* out) {
    *out << rect.x << "," << rect.y << " " << rect.width << "x" << rect.height;
}

namespace {

constexpr std::uint32_t most = std::numeric_limits<std::uint32_t>::max();

// left, right, top, bottom; then first and last for each
using Partial = std::array<std::uint32_t, 12>;

X11Strut partial(const Partial& values) { return X11Strut::decoded(values).value_or(X11Strut{}); }

X11Strut plain(const std::array<std::uint32_t, 4>& values) {
    return X11Strut::decoded(values).value_or(X11Strut{});
}

struct Case {
    std::string name;
    Size root;
    std::vector<Rect> monitors;
    std::vector<X11Strut> struts;
    std::vector<Rect> expected;
};

void PrintTo(const Case& each, std::ostream* out) { *out << each.name; }

const Size wide{3840, 1080};
const std::vector<Rect> sideBySide{{0, 0, 1920, 1080}, {1920, 0, 1920, 1080}};

// Landscape with a portrait monitor on its right, which makes the root taller.
const Size uneven{3000, 1920};
const std::vector<Rect> unevenPair{{0, 0, 1920, 1080}, {1920, 0, 1080, 1920}};

const Size tall{1920, 2160};
const std::vector<Rect> stacked{{0, 0, 1920, 1080}, {0, 1080, 1920, 1080}};

const Size one{1920, 1080};
const std::vector<Rect> alone{{0, 0, 1920, 1080}};

const std::vector<Case> cases = {
    {"no panel", wide, sideBySide, {}, sideBySide},
    {"one panel on each edge",
     one,
     alone,
     {partial({0, 0, 25, 0, 0, 0, 0, 0, 0, 1919, 0, 0}),
      partial({0, 0, 0, 40, 0, 0, 0, 0, 0, 0, 0, 1919}),
      partial({60, 0, 0, 0, 0, 1079, 0, 0, 0, 0, 0, 0}),
      partial({0, 70, 0, 0, 0, 0, 0, 1079, 0, 0, 0, 0})},
     {{60, 25, 1790, 1015}}},
    {"panel at the top of the left monitor alone",
     wide,
     sideBySide,
     {partial({0, 0, 30, 0, 0, 0, 0, 0, 0, 1919, 0, 0})},
     {{0, 30, 1920, 1050}, {1920, 0, 1920, 1080}}},
    {"panel at the top of the right monitor alone",
     wide,
     sideBySide,
     {partial({0, 0, 30, 0, 0, 0, 0, 0, 1920, 3839, 0, 0})},
     {{0, 0, 1920, 1080}, {1920, 30, 1920, 1050}}},
    {"panel left of the inner seam: counted from the far right edge, across the right monitor",
     wide,
     sideBySide,
     {partial({0, 1970, 0, 0, 0, 0, 0, 1079, 0, 0, 0, 0})},
     {{0, 0, 1870, 1080}, {1920, 0, 1920, 1080}}},
    {"panel right of the inner seam: counted from the far left edge, across the left monitor",
     wide,
     sideBySide,
     {partial({1970, 0, 0, 0, 0, 1079, 0, 0, 0, 0, 0, 0})},
     {{0, 0, 1920, 1080}, {1970, 0, 1870, 1080}}},
    {"bottom panel of the shorter monitor counts from the root's height",
     uneven,
     unevenPair,
     {partial({0, 0, 0, 880, 0, 0, 0, 0, 0, 0, 0, 1919})},
     {{0, 0, 1920, 1040}, {1920, 0, 1080, 1920}}},
    {"bottom panel of the taller monitor leaves the shorter one alone",
     uneven,
     unevenPair,
     {partial({0, 0, 0, 40, 0, 0, 0, 0, 0, 0, 1920, 2999})},
     {{0, 0, 1920, 1080}, {1920, 0, 1080, 1880}}},
    {"a plain strut at the bottom does not reach up to the shorter monitor",
     uneven,
     unevenPair,
     {plain({0, 0, 0, 40})},
     {{0, 0, 1920, 1080}, {1920, 0, 1080, 1880}}},
    {"a plain strut goes along the whole edge",
     wide,
     sideBySide,
     {plain({0, 0, 30, 0})},
     {{0, 30, 1920, 1050}, {1920, 30, 1920, 1050}}},
    {"panel above the seam of stacked monitors",
     tall,
     stacked,
     {partial({0, 0, 0, 1110, 0, 0, 0, 0, 0, 0, 0, 1919})},
     {{0, 0, 1920, 1050}, {0, 1080, 1920, 1080}}},
    {"panel below the seam of stacked monitors",
     tall,
     stacked,
     {partial({0, 0, 1110, 0, 0, 0, 0, 0, 0, 1919, 0, 0})},
     {{0, 0, 1920, 1080}, {0, 1110, 1920, 1050}}},
    {"left panel of the lower monitor alone",
     tall,
     stacked,
     {partial({48, 0, 0, 0, 1080, 2159, 0, 0, 0, 0, 0, 0})},
     {{0, 0, 1920, 1080}, {48, 1080, 1872, 1080}}},
    {"a short panel takes the whole edge of its monitor",
     wide,
     sideBySide,
     {partial({0, 0, 0, 40, 0, 0, 0, 0, 0, 0, 2500, 2600})},
     {{0, 0, 1920, 1080}, {1920, 0, 1920, 1040}}},
    {"of two panels at one edge the deeper one counts",
     one,
     alone,
     {plain({0, 0, 30, 0}), plain({0, 0, 50, 0}), plain({0, 0, 20, 0})},
     {{0, 50, 1920, 1030}}},
    {"a range that ends where the monitor begins does not touch it",
     wide,
     sideBySide,
     {partial({0, 0, 30, 0, 0, 0, 0, 0, 1919, 1919, 0, 0})},
     {{0, 30, 1920, 1050}, {1920, 0, 1920, 1080}}},
    {"a range that begins where the monitor ends does not touch it",
     wide,
     sideBySide,
     {partial({0, 0, 30, 0, 0, 0, 0, 0, 1920, 1920, 0, 0})},
     {{0, 0, 1920, 1080}, {1920, 30, 1920, 1050}}},
    {"a monitor that does not lie at the root's edge: the strip ends before it",
     {4000, 3000},
     {{500, 400, 1920, 1080}},
     {plain({499, 1579, 400, 1519})},
     {{500, 400, 1920, 1080}}},
    {"a monitor that does not lie at the root's edge: the strip reaches it",
     {4000, 3000},
     {{500, 400, 1920, 1080}},
     {plain({510, 1600, 420, 1560})},
     {{510, 420, 1890, 1020}}},
    {"a panel that would take the whole monitor is left out",
     one,
     alone,
     {plain({0, 0, 1080, 0}), plain({1919, 0, 0, 0})},
     {{1919, 0, 1, 1080}}},
    {"panels that would take the whole monitor together: the later one is left out",
     one,
     alone,
     {plain({0, 0, 600, 0}), plain({0, 0, 0, 600})},
     {{0, 600, 1920, 480}}},
    {"absurd depths are left out",
     one,
     alone,
     {plain({most, most, most, most}), plain({1920, 1921, 1080, 40000})},
     {{0, 0, 1920, 1080}}},
    {"a range that is turned round holds nowhere",
     one,
     alone,
     {partial({0, 0, 30, 0, 0, 0, 0, 0, 1919, 0, 0, 0})},
     {{0, 0, 1920, 1080}}},
    {"a range beyond the root holds nowhere",
     one,
     alone,
     {partial({0, 0, 30, 0, 0, 0, 0, 0, 1920, most, 0, 0})},
     {{0, 0, 1920, 1080}}},
    {"a range longer than the root holds along the root",
     one,
     alone,
     {partial({0, 0, 30, 0, 0, 0, 0, 0, 0, most, 0, 0})},
     {{0, 30, 1920, 1050}}},
};

class MonitorLessStruts : public testing::TestWithParam<Case> {};

TEST_P(MonitorLessStruts, isAsTheTableSays) {
    const Case& each = GetParam();
    ASSERT_EQ(each.monitors.size(), each.expected.size());
    for (std::size_t i = 0; i < each.monitors.size(); ++i) {
        EXPECT_EQ(monitorLessStruts(each.monitors[i], each.root, each.struts), each.expected[i])
            << "monitor " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, MonitorLessStruts, testing::ValuesIn(cases),
                         [](const auto& tested) { return std::to_string(tested.index); });

TEST(X11Strut, decodesBothForms) {
    const auto whole = X11Strut::decoded(Partial{1, 2, 3, 4, 10, 11, 20, 21, 30, 31, 40, 41});
    ASSERT_TRUE(whole);
    EXPECT_EQ(*whole, (X11Strut{{1, {10, 11}}, {2, {20, 21}}, {3, {30, 31}}, {4, {40, 41}}}));
    const auto four = X11Strut::decoded(std::array<std::uint32_t, 4>{1, 2, 3, 4});
    ASSERT_TRUE(four);
    const X11Strut::Range all{0, static_cast<double>(most)};
    EXPECT_EQ(*four, (X11Strut{{1, all}, {2, all}, {3, all}, {4, all}}));
}

TEST(X11Strut, refusesOtherLengths) {
    const std::vector<std::uint32_t> numbers(20, 1);
    for (std::size_t count = 0; count <= numbers.size(); ++count) {
        EXPECT_EQ(X11Strut::decoded(std::span(numbers).first(count)).has_value(),
                  count == 4 || count == 12)
            << count;
    }
}

RC_GTEST_PROP(MonitorLessStrutsProperties, somethingOfTheMonitorIsAlwaysLeft,
              (const std::vector<std::vector<std::uint32_t>>& values)) {
    std::vector<X11Strut> struts;
    for (std::vector<std::uint32_t> numbers : values) {
        numbers.resize(12);
        struts.push_back(*X11Strut::decoded(numbers));
    }
    for (const Rect& monitor : unevenPair) {
        const Rect left = monitorLessStruts(monitor, uneven, struts);
        RC_ASSERT(left.width > 0);
        RC_ASSERT(left.height > 0);
        RC_ASSERT(monitor.contains(left));
    }
}

TEST(WorkArea, isCutToTheMonitor) {
    const Rect area{0, 30, 3840, 1010};
    EXPECT_EQ(monitorInWorkArea({0, 0, 1920, 1080}, area), (Rect{0, 30, 1920, 1010}));
    EXPECT_EQ(monitorInWorkArea({1920, 0, 1920, 1080}, area), (Rect{1920, 30, 1920, 1010}));
}

TEST(WorkArea, thatDoesNotReachTheMonitorLeavesItWhole) {
    const Rect monitor{1920, 0, 1920, 1080};
    EXPECT_EQ(monitorInWorkArea(monitor, {0, 0, 1920, 1080}), monitor);
    EXPECT_EQ(monitorInWorkArea(monitor, {0, 0, 0, 0}), monitor);
    EXPECT_EQ(monitorInWorkArea(monitor, {2000, 0, 0, 500}), monitor);
}

TEST(WorkArea, isThatOfTheDesktop) {
    const std::vector<std::uint32_t> two = {0, 25, 1920, 1055, 10, 20, 30, 40};
    EXPECT_EQ(workAreaOfDesktop(two, 0), (Rect{0, 25, 1920, 1055}));
    EXPECT_EQ(workAreaOfDesktop(two, 1), (Rect{10, 20, 30, 40}));
    EXPECT_EQ(workAreaOfDesktop(two, 2), std::nullopt);
    EXPECT_EQ(workAreaOfDesktop(two, most), std::nullopt);
    EXPECT_EQ(workAreaOfDesktop({}, 0), std::nullopt);
    EXPECT_EQ(workAreaOfDesktop(std::span(two).first(7), 0), std::nullopt);
}

}  // namespace
}  // namespace lumatile
