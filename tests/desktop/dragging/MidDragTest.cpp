// What happens between taking a window and letting it go.

#include <gtest/gtest.h>

#include "tests/desktop/dragging/DragTest.h"
#include "tests/desktop/dragging/SessionDragTest.h"
#include "tests/desktop/support/KeyPosition.h"

namespace lumatile::desktop {
namespace {

class MidDrag : public SessionDragTest {};

TEST_P(MidDrag, aReleaseInTheMiddleDoesNothing) {
    start();
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(grip());
    hand().moveTo(900, 600);
    hand().letGo();
    EXPECT_TRUE(isLeftAlone());
    EXPECT_EQ(highlight().timesShown(), 0);
    EXPECT_NE(window().frame(), usualFrame) << "it was dragged";
    EXPECT_EQ(window().frame().width, usualFrame.width);
    EXPECT_EQ(window().frame().height, usualFrame.height);
    EXPECT_EQ(desk().endProgram(), "");
}

TEST_P(MidDrag, toTheEdgeAndBackDoesNothing) {
    start();
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(grip());
    hand().moveTo(2, 500);
    ASSERT_TRUE(highlight().waitUntilAt(area("left")));
    hand().moveTo(900, 600);
    EXPECT_TRUE(highlight().waitUntilHidden());
    hand().letGo();
    EXPECT_TRUE(isLeftAlone());
    EXPECT_EQ(window().frame().width, usualFrame.width);
    EXPECT_EQ(window().frame().height, usualFrame.height);
    expectNextDragSnaps();
    EXPECT_EQ(desk().endProgram(), "");
}

TEST_P(MidDrag, aWindowThatEscapeHasTakenBackIsNotDraggedAnyMore) {
    start();
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(grip());
    hand().moveTo(900, 600);
    desk().pressKey(KeyPosition::escape);
    ASSERT_TRUE(desk().reaches(window(), usualFrame));
    hand().moveTo(2, 500);
    hand().letGo();
    EXPECT_TRUE(isLeftAlone());
    EXPECT_EQ(highlight().timesShown(), 0);
    expectNextDragSnaps();
    EXPECT_EQ(desk().endProgram(), "");
}

TEST_P(MidDrag, aWindowThatClosesIsForgotten) {
    start();
    ASSERT_TRUE(prepare());
    auto closing = desk().open(GetParam().windowKinds.front(), usualFrame);
    ASSERT_TRUE(desk().settle(*closing));
    closing->place(usualFrame);
    ASSERT_TRUE(grip(*closing));
    hand().moveTo(2, 500);
    ASSERT_TRUE(highlight().waitUntilAt(area("left")));
    const PixelRect others = window().frame();
    desk().forget();
    closing.reset();
    hand().moveTo(2, 600);
    hand().letGo();
    EXPECT_TRUE(highlight().waitUntilHidden());
    EXPECT_TRUE(isLeftAlone());
    EXPECT_EQ(window().frame(), others);
    expectNextDragSnaps();
    EXPECT_EQ(desk().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, MidDrag, testing::ValuesIn(sessionKinds()), nameOfSession);

/// What an X server does not tell of, or window managers do otherwise.
class MidDragOnX : public DragTest {
protected:
    /// The ordinary case, after the unusual one.
    void expectNextDragSnaps() { expectDrop({"right", 1917, 500}, 0); }
};

TEST_P(MidDragOnX, aTargetThatIsShownHoldsAlsoAfterEscape) {
    SnapDesktop::Setup setup = setupOn(MonitorLayout::landscape());
    // Kwin would take Escape at an edge for a drop.
    setup.options.electricBorders = false;
    start(setup);
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(hand().grip(window()));
    hand().moveTo(2, 500);
    ASSERT_TRUE(highlight().waitUntilAt(area("left")));
    desktop().input().press({}, KeyPosition::escape);
    ASSERT_TRUE(reaches(window(), usualFrame)) << "the window manager takes it back";
    EXPECT_TRUE(highlight().isShown());
    hand().letGo();
    EXPECT_TRUE(snaps(area("left")));
    expectNextDragSnaps();
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(MidDragOnX, aPressWithoutAReleaseBeforeItStartsAfresh) {
    start();
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(hand().grip(window()));
    hand().moveTo(2, 500);
    ASSERT_TRUE(highlight().waitUntilAt(area("left")));
    hand().pressAgain();
    hand().letGo();
    EXPECT_TRUE(highlight().waitUntilHidden());
    EXPECT_TRUE(isLeftAlone());
    expectNextDragSnaps();
    EXPECT_EQ(desktop().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, MidDragOnX, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
