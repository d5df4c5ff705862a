// Which windows the shortcuts take, on every session.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "tests/desktop/support/session/SharedDesk.h"

namespace lumatile::desktop {
namespace {

constexpr PixelRect usual{200, 150, 640, 400};

class WindowTypes : public OnSharedSession {
protected:
    SessionDesk::Setup setup() const override {
        SessionDesk::Setup setup;
        setup.layout = MonitorLayout::landscapeAndPortrait();
        setup.panel = 0;
        return setup;
    }

    PixelRect area(std::string_view command, std::size_t monitor = 0) {
        return desk().expected().area(defaultShortcut(command), monitor);
    }

    std::unique_ptr<SessionWindow> open() {
        return desk().open(GetParam().windowKinds.front(), usual);
    }

    void expectStays(SessionWindow& window) {
        const PixelRect before = window.frame();
        desk().forget();
        window.askForFocus();
        desk().roundTrip();
        for (const std::string_view command : {"left", "leftThird", "center"}) {
            desk().press(command);
        }
        // What has dealt with this window has dealt with those presses.
        const auto other = open();
        ASSERT_TRUE(desk().settle(*other));
        EXPECT_EQ(window.frame(), before);
        EXPECT_EQ(window.timesAsked(), 0U);
        EXPECT_THAT(window.otherThanPlaces(), testing::IsEmpty());
    }
};

TEST_P(WindowTypes, everyTypeSnapsButPanelsAndWhatStaysByItself) {
    for (const std::string& type : GetParam().placedTypes) {
        SCOPED_TRACE(type);
        const auto window = desk().openTyped(type);
        window->activate();
        desk().press("left");
        EXPECT_TRUE(desk().reaches(*window, area("left")));
        desk().press("topRight");
        EXPECT_TRUE(desk().reaches(*window, area("topRight")));
    }
    for (const std::string& type : GetParam().leftTypes) {
        SCOPED_TRACE(type);
        const auto window = desk().openTyped(type);
        expectStays(*window);
    }
    expectStays(desk().panel());
}

TEST_P(WindowTypes, theActiveWindowOfAProgramIsTheOneThatSnaps) {
    const auto [first, second] = desk().openPair();
    first->place({100, 100, 500, 400});
    second->place({700, 100, 500, 400});
    first->activate();
    desk().press("left");
    EXPECT_TRUE(desk().reaches(*first, area("left")));
    second->activate();
    desk().press("right");
    EXPECT_TRUE(desk().reaches(*second, area("right")));
    EXPECT_EQ(first->frame(), area("left"));
}

TEST_P(WindowTypes, aWindowSnapsOnTheScreenToWhichItHasJustBeenMoved) {
    const auto window = open();
    for (int round = 0; round < 5; ++round) {
        for (const std::size_t monitor : {0U, 1U}) {
            const PixelRect screen = desk().expected().visible(monitor);
            // The end of the last snap would take the window back.
            ASSERT_TRUE(desk().settle(*window));
            window->place({screen.x + 150, screen.y + 120, 600, 400});
            desk().press("bottomLeft");
            ASSERT_TRUE(desk().reaches(*window, area("bottomLeft", monitor))) << "round " << round;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Desktop, WindowTypes, testing::ValuesIn(sessionKinds()), nameOfSession);

}  // namespace
}  // namespace lumatile::desktop
