// Which buttons drag, and which windows are dragged. The windows are moved by the test, as those
// are which move themselves while a button is held: so only the program decides what is a drag.

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "tests/desktop/dragging/DragTest.h"
#include "tests/desktop/dragging/SessionDragTest.h"

namespace lumatile::desktop {
namespace {

constexpr PixelRect moved{520, 330, 700, 450};

class WhatIsDragged : public SessionDragTest {
protected:
    /// Presses inside the window, has it move, goes to the left edge, lets go, and expects the
    /// program to see nothing in that.
    void expectNoDrag(SessionWindow& moving, std::uint8_t button, const PixelRect& to) {
        const PixelRect frame = moving.frame();
        PointerHand other(desk(), button);
        other.press(frame.x + frame.width / 2, frame.y + frame.height / 2);
        // The program has to see the press before the window moves.
        const bool hasSeen = desk().awaitProgram();
        if (frame != to) {
            moving.place(to);
        }
        desk().forget();
        highlight().forget();
        other.moveTo(2, 500);
        other.letGo();
        ASSERT_TRUE(hasSeen);
        EXPECT_TRUE(isLeftAlone(moving));
        EXPECT_EQ(highlight().timesShown(), 0);
        EXPECT_EQ(moving.frame(), to);
    }

    static PixelRect lowerBy(int pixels, PixelRect frame) {
        frame.y += pixels;
        return frame;
    }
};

TEST_P(WhatIsDragged, theOtherButtonsDragNothing) {
    start();
    for (const std::uint8_t button : {std::uint8_t{2}, std::uint8_t{3}}) {
        SCOPED_TRACE("button " + std::to_string(button));
        ASSERT_TRUE(prepare());
        expectNoDrag(window(), button, moved);
    }
    expectNextDragSnaps();
    EXPECT_EQ(desk().endProgram(), "");
}

TEST_P(WhatIsDragged, panelsAndTheDesktopStayWhereTheyAre) {
    start(MonitorLayout::landscape(), 0);
    // Not where the background is pressed.
    ASSERT_TRUE(prepare({1300, 500, 500, 300}));
    expectNoDrag(desk().panel(), 1, desk().panel().frame());
    const auto background = desk().openTyped("DESKTOP");
    ASSERT_TRUE(prepare({1300, 500, 500, 300}));
    expectNoDrag(*background, 1, lowerBy(30, background->frame()));
    EXPECT_EQ(desk().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, WhatIsDragged, testing::ValuesIn(sessionKinds()), nameOfSession);

/// Programs of X move their windows by themselves, and its server gives the buttons their numbers.
class WhatIsDraggedOnX : public DragTest {
protected:
    /// Presses inside the window, has it move, goes to the left edge and lets go.
    /// @return false when the program does not see the press
    bool dragByItself(TestWindow& moving, const PixelRect& to) {
        const PixelRect frame = moving.frame();
        hand().press(frame.x + frame.width / 2, frame.y + frame.height / 2);
        const bool hasSeen = awaitProgram();
        moving.place(to);
        forget();
        hand().moveTo(2, 500);
        hand().letGo();
        return hasSeen;
    }
};

TEST_P(WhatIsDraggedOnX, aWindowThatMovesItselfUnderTheFirstButton) {
    start();
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(dragByItself(window(), moved));
    EXPECT_TRUE(snaps(area("left")));
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(WhatIsDraggedOnX, aPanelThatMovesItselfStaysThere) {
    SnapDesktop::Setup setup = setupOn(MonitorLayout::landscape());
    setup.panel = 0;
    start(setup);
    ASSERT_TRUE(prepare());
    PixelRect higher = desktop().panel().frame();
    higher.y -= 100;
    ASSERT_TRUE(dragByItself(desktop().panel(), higher));
    EXPECT_TRUE(isLeftAlone(desktop().panel().id()));
    EXPECT_EQ(highlight().timesShown(), 0);
    EXPECT_EQ(desktop().panel().frame(), higher);
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(WhatIsDraggedOnX, theFirstButtonOfALeftHandedMouseIsItsRightOne) {
    start();
    InputDriver& input = desktop().input();
    const XReply<xcb_get_pointer_mapping_reply_t> mapping(xcb_get_pointer_mapping_reply(
        input.connection(), xcb_get_pointer_mapping(input.connection()), nullptr));
    constexpr std::array<std::uint8_t, 10> leftHanded{3, 2, 1, 4, 5, 6, 7, 8, 9, 10};
    const auto count = static_cast<std::uint8_t>(xcb_get_pointer_mapping_map_length(mapping.get()));
    ASSERT_LE(count, leftHanded.size());
    xcb_set_pointer_mapping(input.connection(), count, leftHanded.data());
    input.roundTrip();

    ASSERT_TRUE(prepare());
    ASSERT_TRUE(dragByItself(window(), moved));
    EXPECT_TRUE(isLeftAlone());
    EXPECT_EQ(highlight().timesShown(), 0);

    ASSERT_TRUE(prepare());
    DragHand right(input, 3, [this] { return awaitProgram(); });
    ASSERT_TRUE(right.grip(window()));
    right.moveTo(2, 500);
    right.letGo();
    EXPECT_TRUE(snaps(area("left")));
    EXPECT_EQ(desktop().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, WhatIsDraggedOnX, testing::ValuesIn(WindowManager::kinds),
                         nameOf);

}  // namespace
}  // namespace lumatile::desktop
