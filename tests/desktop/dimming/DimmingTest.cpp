// The program darkens the screens when nobody touches anything, on every session that composites.

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/desktop/support/session/SessionKinds.h"

namespace lumatile::desktop {
namespace {

// Half as bright after three seconds without input: longer than the program takes to look again.
constexpr const char* darkSoon =
    R"({"orbitEnabled":false,"jitterEnabled":false,"idleThreshold":3,"idleDimStrength":0.5})";

/// Compositors lose some by rounding.
constexpr int rounding = 3;

// The colour of the tests' windows.
const ScreenColor bright = ScreenColor::of(0x3a6ea5);

struct Place {
    int x;
    int y;
};

class Dimming : public OnEverySession {
protected:
    static std::unique_ptr<SessionDesk> start() {
        SessionDesk::Setup setup;
        setup.layout = MonitorLayout::landscapeAndPortrait();
        setup.isSeen = true;
        setup.settings.oledSettings = darkSoon;
        return GetParam().start(setup);
    }

    testing::AssertionResult show(SessionDesk& desk, const ScreenColor& color) {
        for (const Place& place : places) {
            const ScreenColor shown = desk.colorAt(place.x, place.y);
            if (!shown.isNear(color, rounding)) {
                return testing::AssertionFailure()
                       << place.x << ", " << place.y << " shows " << shown;
            }
        }
        return testing::AssertionSuccess();
    }

    /// While nobody touches anything.
    testing::AssertionResult comeToShow(SessionDesk& desk, const ScreenColor& color) {
        desk.waitUntil([&] { return bool(show(desk, color)); });
        return show(desk, color);
    }

    /// While somebody goes on touching: after a single touch they would be dark again before long.
    testing::AssertionResult clear(SessionDesk& desk) {
        int touches = 0;
        desk.waitUntil([&] {
            desk.movePointer(20 + ++touches % 50, 1060);
            return bool(show(desk, bright));
        });
        return show(desk, bright);
    }

    /// Inside the windows on either screen.
    std::vector<Place> places{{600, 500}, {2300, 600}};
};

TEST_P(Dimming, coversEveryMonitorLetsInputThroughAndClears) {
    const auto desk = start();
    const std::string& kind = GetParam().windowKinds.front();
    const auto first = desk->open(kind, {200, 150, 640, 400});
    first->place({300, 200, 700, 600});
    const auto second = desk->open(kind, {2000, 150, 640, 400});
    second->place({2000, 300, 700, 600});
    EXPECT_TRUE(clear(*desk));
    EXPECT_TRUE(comeToShow(*desk, bright.behindBlack(0.5)));

    // A click goes to the window below, and keys to the window that had them.
    desk->press("bottom");
    EXPECT_TRUE(desk->reaches(*second, desk->expected().area(defaultShortcut("bottom"), 1)));
    places.back() = {2300, 1500};
    desk->movePointer(600, 500);
    desk->buttonDown(1);
    desk->buttonUp(1);
    ASSERT_TRUE(desk->waitUntil([&] { return first->isActive(); }));
    ASSERT_TRUE(desk->awaitProgram());
    desk->press("left");
    EXPECT_TRUE(desk->reaches(*first, desk->expected().area(defaultShortcut("left"), 0)));
    EXPECT_TRUE(clear(*desk));

    // Dark again, however little, it is bright at the end of the program.
    EXPECT_TRUE(desk->waitUntil([&] { return !show(*desk, bright); }));
    EXPECT_EQ(desk->endProgram(), "");
    EXPECT_TRUE(comeToShow(*desk, bright));
}

INSTANTIATE_TEST_SUITE_P(Desktop, Dimming, testing::ValuesIn(sessionKinds()), nameOfSession);

}  // namespace
}  // namespace lumatile::desktop
