// What a snap costs: the writes asked of the window manager, beside the geometry changes that the
// window went through.

#include <gtest/gtest.h>

#include "tests/desktop/snapping/SnapDesktop.h"

namespace lumatile::desktop {
namespace {

class Writes : public OnEveryWindowManager {};

TEST_P(Writes, anOrdinarySnapAsksAtMostTwiceAndChangesTheWindowAFewTimes) {
    SnapDesktop::Setup setup;
    setup.windowManager = GetParam();
    SnapDesktop desktop(setup);
    const auto window = desktop.desktop().openWindow({});
    window->place({200, 150, 600, 400});
    for (const std::string_view command : {"left", "rightThird", "topLeft", "maximize", "center"}) {
        if (command == "center") {
            window->place({200, 150, 600, 400});
        }
        ASSERT_TRUE(desktop.settle(*window));
        const PixelRect before = window->frame();
        window->forgetConfigurations();
        desktop.observer().forget();
        desktop.press(command);
        const PixelRect target = command == "center"
                                     ? desktop.expected().centered(before, 0)
                                     : desktop.expected().area(defaultShortcut(command), 0);
        ASSERT_TRUE(reaches(*window, target)) << command;
        ASSERT_TRUE(desktop.settle(*window));
        const std::size_t asked =
            desktop.observer().messages(window->id(), "_NET_MOVERESIZE_WINDOW").size();
        // The window manager reports a change from its frame's side and from the client's.
        const std::size_t reported = window->configurations().size();
        RecordProperty(std::string(command) + "_asked", static_cast<int>(asked));
        RecordProperty(std::string(command) + "_reported", static_cast<int>(reported));
        EXPECT_GE(asked, 1U) << command;
        EXPECT_LE(asked, 2U) << command;
        EXPECT_GE(reported, 1U) << command;
        EXPECT_LE(reported, 6U) << command;
        EXPECT_TRUE(desktop.observer().messages(window->id(), "_NET_WM_STATE").empty()) << command;
    }
    EXPECT_EQ(desktop.endProgram(), "");
}

TEST_P(Writes, aSnapToWhereTheWindowIsAsksForNothing) {
    SnapDesktop::Setup setup;
    setup.windowManager = GetParam();
    SnapDesktop desktop(setup);
    const auto window = desktop.desktop().openWindow({});
    desktop.press("rightThird");
    ASSERT_TRUE(reaches(*window, desktop.expected().area(defaultShortcut("rightThird"), 0)));
    ASSERT_TRUE(desktop.settle(*window));
    desktop.observer().forget();
    window->forgetConfigurations();
    desktop.press("rightThird");
    ASSERT_TRUE(desktop.settle(*window));
    EXPECT_EQ(desktop.observer().messages(window->id(), "_NET_MOVERESIZE_WINDOW").size(), 0U);
    EXPECT_EQ(window->frame(), desktop.expected().area(defaultShortcut("rightThird"), 0));
    EXPECT_EQ(desktop.endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, Writes, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
