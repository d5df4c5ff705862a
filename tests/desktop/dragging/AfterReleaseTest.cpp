// How a window gets to its place once it is let go.

#include <gtest/gtest.h>

#include <string>

#include "tests/desktop/dragging/DragTest.h"
#include "tests/desktop/dragging/SessionDragTest.h"
#include "tests/desktop/support/HeldWindowManager.h"
#include "tests/desktop/support/OuterRectangles.h"
#include "tests/desktop/support/WindowManagerAnswer.h"
#include "tests/desktop/support/WindowPlacing.h"

namespace lumatile::desktop {
namespace {

class AfterRelease : public SessionDragTest {
protected:
    /// Drags the window to the place, lets go of it there and expects it to become what the place
    /// promises, with nothing on the way.
    void expectOneChange(const DropPlace& place) {
        SCOPED_TRACE(place.command);
        ASSERT_TRUE(prepare());
        ASSERT_TRUE(grip());
        hand().moveTo(place.x, place.y);
        ASSERT_TRUE(highlight().waitUntilAt(area(place.command)));
        // The window still follows the pointer, which the program has looked at already.
        desk().awaitWindowManager();
        window().forgetFrames();
        hand().letGo();
        ASSERT_TRUE(snaps(area(place.command)));
        const std::size_t further = isAtLowerEdge(place) ? 0 : GetParam().framesOutOfATile;
        EXPECT_LE(window().frames().size(), 2U + further) << toString(window().frames());
        EXPECT_LE(window().sizes().size(), 2U + further) << toString(window().sizes());
        EXPECT_LE(window().timesAsked(), 1U + further);
    }

private:
    bool isAtLowerEdge(const DropPlace& place) {
        constexpr int near = 5;
        return place.y > desk().expected().visible(0).bottom() - near;
    }
};

TEST_P(AfterRelease, theWindowGoesToItsPlaceAtOnce) {
    start();
    for (const DropPlace& place : dropPlaces(desk().expected().visible(0))) {
        ASSERT_NO_FATAL_FAILURE(expectOneChange(place));
    }
    for (const std::string& kind : GetParam().titledKinds) {
        if (kind == GetParam().windowKinds.front()) {
            continue;  // That was it.
        }
        SCOPED_TRACE(kind);
        use(desk().open(kind, usualFrame));
        if (window().hasSteps()) {
            continue;  // On its way out of a tile it takes its steps once more.
        }
        for (const DropPlace& place :
             {DropPlace{"topRight", 1917, 20}, DropPlace{"centerThird", 960, 1077}}) {
            ASSERT_NO_FATAL_FAILURE(expectOneChange(place));
        }
    }
    EXPECT_EQ(desk().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, AfterRelease, testing::ValuesIn(sessionKinds()), nameOfSession);

/// Windows that are taken as it is done on X alone, and a window manager that is apart from what
/// tells of the release.
class AfterReleaseOnX : public DragTest {
protected:
    /// Takes the window that the hand holds to the place, lets go of it there and expects it to
    /// become what the place promises, with nothing on the way.
    void expectOneChange(XClient& client, xcb_window_t window, const DropPlace& place) {
        SCOPED_TRACE(place.command);
        OuterRectangles seen(desktop().desktop().display(), window);
        hand().moveTo(place.x, place.y);
        ASSERT_TRUE(highlight().waitUntilAt(area(place.command)));
        // The window still follows the pointer, which the program has looked at already.
        waitForWindowManager(client);
        seen.forget();
        hand().letGo();
        ASSERT_TRUE(snaps(client, window, area(place.command)));
        const std::string all = toString(seen.outer());
        if (GetParam() == WindowManager::Kind::kwin && !isAtLowerEdge(place)) {
            // Its tile is the target, and it goes only when the window is maximized and restored.
            EXPECT_LE(seen.outer().size(), 1U + 1U + 2U) << all;
        } else {
            EXPECT_EQ(seen.outer().size(), 2U) << all;
            EXPECT_LE(seen.clientSizes().size(), 2U) << toString(seen.clientSizes());
            EXPECT_EQ(desktop().observer().messages(window, "_NET_MOVERESIZE_WINDOW").size(), 1U);
        }
    }

private:
    /// Where no window manager tiles by itself.
    bool isAtLowerEdge(const DropPlace& place) {
        constexpr int near = 5;
        return place.y > desktop().expected().visible(0).bottom() - near;
    }
};

TEST_P(AfterReleaseOnX, aWindowWithoutAFrameGoesToItsPlaceAtOnce) {
    SnapDesktop::Setup setup = setupOn(MonitorLayout::landscape());
    setup.options.movesWithAlt = true;
    start(setup);
    TestWindow::Options options;
    options.kind = TestWindow::Kind::undecorated;
    const auto bare = desktop().desktop().openWindow(options);
    for (const DropPlace& place : {DropPlace{"left", 2, 500}, DropPlace{"topRight", 1917, 20},
                                   DropPlace{"centerThird", 960, 1077}}) {
        ASSERT_TRUE(desktop().settle(*bare));
        bare->place(usualFrame);
        forget();
        ASSERT_TRUE(hand().gripWithAlt(*bare));
        ASSERT_NO_FATAL_FAILURE(expectOneChange(*bare, bare->id(), place));
    }
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(AfterReleaseOnX, aWindowThatDrawsItsOwnFrameGoesToItsPlaceAtOnce) {
    start();
    const auto program =
        desktop().desktop().openProgram({LUMATILE_CLIENT_SIDE_WINDOW}, "ClientSideWindow");
    DesktopObserver& observer = desktop().observer();
    for (const DropPlace& place : {DropPlace{"left", 2, 500}, DropPlace{"topRight", 1917, 20},
                                   DropPlace{"centerThird", 960, 1077}}) {
        ASSERT_TRUE(desktop().settle());
        placeWindow(observer, program.window, usualFrame);
        forget();
        ASSERT_TRUE(hand().gripOfProgram(observer, program.window));
        ASSERT_NO_FATAL_FAILURE(expectOneChange(observer, program.window, place));
    }
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(AfterReleaseOnX, theWindowGoesToItsPlaceBySlowWindowManagersToo) {
    start();
    for (const DropPlace& place : dropPlaces(desktop().expected().visible(0))) {
        SCOPED_TRACE(place.command);
        ASSERT_TRUE(prepare());
        ASSERT_TRUE(hand().grip(window()));
        hand().moveTo(place.x, place.y);
        ASSERT_TRUE(highlight().waitUntilAt(area(place.command)));
        waitForWindowManager(window());
        {
            // Longer than the program waits for it.
            const HeldWindowManager held(desktop().desktop().windowManager(), desktop().observer());
            hand().letGo();
            ASSERT_TRUE(XClient::waitUntil([&] {
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

INSTANTIATE_TEST_SUITE_P(Desktop, AfterReleaseOnX, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
