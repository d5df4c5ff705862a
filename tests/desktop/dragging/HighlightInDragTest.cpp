// The highlight while a window is dragged through the running program.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/desktop/dragging/DragTest.h"
#include "tests/desktop/dragging/SessionDragTest.h"

namespace lumatile::desktop {
namespace {

using testing::Contains;
using testing::Not;

class HighlightInDrag : public SessionDragTest {};

TEST_P(HighlightInDrag, showsWhereTheWindowWillLand) {
    start();
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(grip());
    EXPECT_EQ(highlight().timesShown(), 0);
    hand().moveTo(2, 500);
    ASSERT_TRUE(highlight().waitUntilAt(area("left")));
    EXPECT_TRUE(window().isActive());
    EXPECT_NE(window().frame(), area("left")) << "it must not move before it is let go";

    hand().letGo();
    EXPECT_TRUE(highlight().waitUntilHidden());
    EXPECT_TRUE(desk().reaches(window(), area("left")));
    // Looked at here, since the question whether the program is done takes the focus for a while.
    EXPECT_TRUE(window().isActive());
    EXPECT_TRUE(snaps(area("left")));
    EXPECT_EQ(highlight().timesShown(), 1);
    EXPECT_EQ(desk().endProgram(), "");
}

TEST_P(HighlightInDrag, followsThePointerToOtherTargets) {
    start();
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(grip());
    hand().moveTo(2, 500);
    ASSERT_TRUE(highlight().waitUntilAt(area("left")));
    // Along the edge, where every place has a target.
    hand().moveTo(2, 1060);
    ASSERT_TRUE(highlight().waitUntilAt(area("bottomLeft")));
    hand().moveTo(300, 1077);
    ASSERT_TRUE(highlight().waitUntilAt(area("leftThird")));
    EXPECT_EQ(highlight().timesShown(), 1) << "it must not go and come again on the way";

    hand().moveTo(700, 600);
    EXPECT_TRUE(highlight().waitUntilHidden());
    hand().moveTo(1917, 500);
    EXPECT_TRUE(highlight().waitUntilAt(area("right")));
    hand().letGo();
    EXPECT_TRUE(snaps(area("right")));
    EXPECT_TRUE(highlight().waitUntilHidden());
    EXPECT_EQ(desk().endProgram(), "");
}

TEST_P(HighlightInDrag, crossesToTheOtherMonitor) {
    start(MonitorLayout::landscapeAndPortrait());
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(grip());
    hand().moveTo(1917, 500);
    ASSERT_TRUE(highlight().waitUntilAt(area("right", 0)));
    hand().moveTo(1922, 500);
    ASSERT_TRUE(highlight().waitUntilAt(area("left", 1)));
    hand().moveTo(1917, 500);
    ASSERT_TRUE(highlight().waitUntilAt(area("right", 0)));
    hand().letGo();
    EXPECT_TRUE(snaps(area("right", 0)));
    EXPECT_EQ(desk().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, HighlightInDrag, testing::ValuesIn(sessionKinds()),
                         nameOfSession);

class HighlightOnX : public DragTest {
protected:
    xcb_window_t focus() {
        const XReply<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
            desktop().observer().connection(),
            xcb_get_input_focus(desktop().observer().connection()), nullptr));
        return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
    }

    std::vector<std::uint32_t> managed() {
        return desktop().observer().cardinals(desktop().observer().root(), "_NET_CLIENT_LIST");
    }
};

TEST_P(HighlightOnX, isNothingThatAWindowManagerOrAClickMinds) {
    start();
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(hand().grip(window()));
    const xcb_window_t focused = focus();
    hand().moveTo(2, 500);
    ASSERT_TRUE(highlight().waitUntilAt(area("left")));
    const xcb_window_t first = highlight().window();
    EXPECT_TRUE(highlight().isOverrideRedirect());
    EXPECT_TRUE(highlight().letsThrough(2, 500));
    EXPECT_THAT(managed(), Not(Contains(first)));
    EXPECT_EQ(focus(), focused);
    // Along the edge, where every place has a target.
    hand().moveTo(2, 1060);
    ASSERT_TRUE(highlight().waitUntilAt(area("bottomLeft")));
    EXPECT_EQ(highlight().window(), first);
    hand().letGo();
    EXPECT_TRUE(snaps(area("bottomLeft")));
    EXPECT_EQ(desktop().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, HighlightOnX, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
