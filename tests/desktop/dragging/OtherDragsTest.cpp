// Ways to drag other than by the title bar of an ordinary window.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/desktop/dragging/DragTest.h"
#include "tests/desktop/dragging/SessionDragTest.h"
#include "tests/desktop/support/OuterFrame.h"
#include "tests/desktop/support/WindowPlacing.h"

namespace lumatile::desktop {
namespace {

class OtherDrags : public DragTest {};

TEST_P(OtherDrags, aWindowThatDrawsItsOwnFrame) {
    for (const bool compositing : {false, true}) {
        SCOPED_TRACE(compositing ? "composited, with a shadow where there can be one" : "plain");
        SnapDesktop::Setup setup = setupOn(MonitorLayout::landscape());
        setup.options.compositing = compositing;
        start(setup);
        const auto program =
            desktop().desktop().openProgram({LUMATILE_CLIENT_SIDE_WINDOW}, "ClientSideWindow");
        DesktopObserver& observer = desktop().observer();
        // The shadow comes after the window, and with it the program puts itself in its place anew.
        const auto castsShadow = [&] {
            const auto shadow = observer.cardinals(program.window, "_GTK_FRAME_EXTENTS");
            return std::any_of(shadow.begin(), shadow.end(), [](auto side) { return side > 0; });
        };
        if (compositing && GetParam() != WindowManager::Kind::openbox) {
            ASSERT_TRUE(XClient::waitUntil(castsShadow));
        }
        for (const DropPlace& place : {DropPlace{"left", 2, 500}, DropPlace{"topRight", 1917, 20},
                                       DropPlace{"centerThird", 960, 1077}}) {
            SCOPED_TRACE(place.command);
            ASSERT_TRUE(desktop().settle());
            placeWindow(observer, program.window, usualFrame);
            observer.forget();
            ASSERT_TRUE(hand().gripOfProgram(observer, program.window));
            hand().moveTo(place.x, place.y);
            hand().letGo();
            const PixelRect wanted = area(place.command);
            EXPECT_TRUE(snaps(observer, program.window, wanted));
        }
        EXPECT_EQ(desktop().endProgram(), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Desktop, OtherDrags, testing::ValuesIn(WindowManager::kinds), nameOf);

class Resizing : public SessionDragTest {};

TEST_P(Resizing, byACornerNeverSnaps) {
    start();
    const struct {
        const char* corner;
        bool isUpperLeft;
        int x;
        int y;
    } cases[] = {{"lower right", false, 1917, 1077}, {"upper left", true, 2, 20}};
    for (const auto& [corner, isUpperLeft, x, y] : cases) {
        SCOPED_TRACE(corner);
        ASSERT_TRUE(prepare());
        const PixelRect before = window().frame();
        const int out = desk().resizedAt();
        // Above the frame no session has a handle.
        constexpr int inset = 2;
        const int startX = isUpperLeft ? before.x - out : before.right() - 1 + out;
        const int startY = isUpperLeft ? before.y + inset : before.bottom() - 1 + out;
        ASSERT_TRUE(desk().awaitSomethingAt(startX, startY));
        ASSERT_TRUE(hand().gripAt(startX, startY, [&] { return window().frame() != before; }));
        hand().moveTo(x, y);
        ASSERT_TRUE(desk().waitUntil([&] {
            const PixelRect now = window().frame();
            return now.width > before.width && now.height > before.height;
        })) << "it must be a resize that is tested; it is at "
            << window().frame();
        hand().letGo();
        EXPECT_TRUE(isLeftAlone());
        EXPECT_EQ(highlight().timesShown(), 0);
    }
    EXPECT_EQ(desk().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, Resizing, testing::ValuesIn(sessionKinds()), nameOfSession);

}  // namespace
}  // namespace lumatile::desktop
