#include "Lumatile/FullScreenWindows.h"

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"

namespace lumatile {
namespace {

class FullScreenWindowsTest : public testing::Test {
protected:
    FullScreenWindowsTest() {
        desktop.plug("left", {0, 0, 1920, 1080});
        desktop.plug("right", {1920, 0, 1920, 1080});
        player = desktop.launch({.pid = 100, .applicationId = "player"});
        editor = desktop.launch({.pid = 101, .applicationId = "editor"});
        desktop.open(editor, Rect{100, 100, 800, 600});
    }

    bool isAny() { return isAnyWindowFullScreen(desktop.workspace, desktop.accessibility); }

    /// A full-screen window on the other screen.
    WindowID openFilm() {
        SimulatedWindowTraits film;
        film.frame = {1920, 0, 1920, 1080};
        film.isFullScreen = true;
        return desktop.open(player, film);
    }

    SimulatedDesktop desktop;
    ApplicationID player{};
    ApplicationID editor{};
};

TEST_F(FullScreenWindowsTest, ordinaryWindowsFillNothing) { EXPECT_FALSE(isAny()); }

TEST_F(FullScreenWindowsTest, oneBehindTheFocusOnAnotherScreenCounts) {
    const WindowID film = openFilm();
    desktop.click({200, 200});
    EXPECT_TRUE(isAny());
    desktop.quit(player);
    EXPECT_FALSE(desktop.isOpen(film));
    EXPECT_FALSE(isAny());
}

TEST_F(FullScreenWindowsTest, aMinimizedOneDoesNotCount) {
    const WindowID film = openFilm();
    desktop.programs.find(film)->traits.isMinimized = true;
    EXPECT_FALSE(isAny());
}

TEST_F(FullScreenWindowsTest, oneThatCannotBeReadDoesNotCount) {
    const WindowID film = openFilm();
    ASSERT_TRUE(isAny());
    desktop.programs.find(film)->faults.unreadable.insert("AXFullScreen");
    EXPECT_FALSE(isAny());
}

}  // namespace
}  // namespace lumatile
