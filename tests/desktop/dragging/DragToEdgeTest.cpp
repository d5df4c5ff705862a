// Drops to which the program, or the window manager, comes late.

#include <gtest/gtest.h>
#include <signal.h>

#include <string>

#include "tests/desktop/dragging/DragTest.h"
#include "tests/desktop/support/HeldWindowManager.h"
#include "tests/desktop/support/WindowManagerAnswer.h"

namespace lumatile::desktop {
namespace {

class DragToEdge : public DragTest {
protected:
    /// Stops the program once it has nothing left to do.
    /// @return false when it does not come to rest
    bool holdProgram() { return awaitProgram() && kill(desktop().program().pid(), SIGSTOP) == 0; }

    bool releaseProgram() { return kill(desktop().program().pid(), SIGCONT) == 0; }
};

TEST_P(DragToEdge, aProgramThatWasBusyCarriesTheDropOutAfterwards) {
    start();
    struct Drop {
        int x = 0;
        int y = 0;
        PixelRect becomes;
    };
    for (const Drop& drop : {Drop{2, 500, {0, 0, 960, 1080}}, Drop{900, 2, {0, 0, 1920, 1080}}}) {
        SCOPED_TRACE(std::to_string(drop.x) + ", " + std::to_string(drop.y));
        ASSERT_TRUE(prepare());
        ASSERT_TRUE(hand().grip(window()));
        hand().moveTo(500, 500);
        // It sees the rest of the drag all at once.
        ASSERT_TRUE(holdProgram());
        hand().moveTo(drop.x, drop.y);
        hand().letGo();
        if (GetParam() == WindowManager::Kind::kwin) {
            // Its own tile is there before the program knows of the release.
            EXPECT_TRUE(XClient::waitUntil([&] { return window().frame() == drop.becomes; }));
        }
        ASSERT_TRUE(releaseProgram());
        EXPECT_TRUE(snaps(drop.becomes));
    }
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(DragToEdge, aWindowThatHasChangedWhileTheProgramWasBusyIsDroppedToo) {
    start();
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(hand().grip(window()));
    ASSERT_TRUE(holdProgram());
    // What it knows of the window is from before this when it hears of the release.
    window().setText(window().id(), "WM_CLASS", XCB_ATOM_STRING,
                     std::string("testwindow\0Renamed\0", 19));
    window().roundTrip();
    hand().moveTo(2, 500);
    hand().letGo();
    if (GetParam() == WindowManager::Kind::kwin) {
        EXPECT_TRUE(XClient::waitUntil([&] { return window().frame() == area("left"); }));
    }
    ASSERT_TRUE(releaseProgram());
    EXPECT_TRUE(snaps(area("left")));
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(DragToEdge, aWindowThatCameToTheFrontByTheDragIsDroppedByABusyProgramToo) {
    start();
    ASSERT_TRUE(prepare());
    TestWindow::Options beside;
    beside.area = {1400, 700, 300, 200};
    const auto other = desktop().desktop().openWindow(beside);
    forget();
    {
        // The program has seen the press before the window is in front.
        const HeldWindowManager held(desktop().desktop().windowManager(), desktop().observer());
        hand().press(usualFrame.x + 150, usualFrame.y + 12);
        ASSERT_TRUE(holdProgram());
    }
    // The window manager sees nothing of the movements before it has seen the press.
    int pulled = 0;
    ASSERT_TRUE(XClient::waitUntil([&] {
        pulled = pulled % 100 + 10;
        hand().moveTo(usualFrame.x + 150 + pulled, usualFrame.y + 12 + pulled);
        return window().frame() != usualFrame;
    }));
    hand().moveTo(2, 500);
    hand().letGo();
    if (GetParam() == WindowManager::Kind::kwin) {
        EXPECT_TRUE(XClient::waitUntil([&] { return window().frame() == area("left"); }));
    }
    ASSERT_TRUE(releaseProgram());
    EXPECT_TRUE(snaps(area("left")));
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(DragToEdge, aTileIsLeftByAWindowManagerThatIsTooSlowToAnswer) {
    start();
    for (const DropPlace& place : {DropPlace{"left", 2, 500}, DropPlace{"maximize", 900, 2}}) {
        SCOPED_TRACE(place.command);
        ASSERT_TRUE(prepare());
        ASSERT_TRUE(hand().grip(window()));
        hand().moveTo(500, 500);
        ASSERT_TRUE(holdProgram());
        hand().moveTo(place.x, place.y);
        hand().letGo();
        if (GetParam() == WindowManager::Kind::kwin) {
            EXPECT_TRUE(
                XClient::waitUntil([&] { return window().frame() == area(place.command); }));
        }
        waitForWindowManager(window());
        {
            const HeldWindowManager held(desktop().desktop().windowManager(), desktop().observer());
            ASSERT_TRUE(releaseProgram());
            EXPECT_TRUE(XClient::waitUntil([&] {
                return !desktop()
                            .observer()
                            .messages(window().id(), "_NET_MOVERESIZE_WINDOW")
                            .empty();
            }));
        }
        EXPECT_TRUE(snaps(area(place.command)));
    }
    EXPECT_EQ(desktop().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, DragToEdge, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
