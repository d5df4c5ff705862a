// Which buttons drag, and which windows are dragged. The windows are moved by the test, as those
// are which move themselves while a button is held: so only the program decides what is a drag.

#include <gtest/gtest.h>

#include <array>

#include "tests/desktop/dragging/DragTest.h"

namespace lumatile::desktop {
namespace {

class WhatIsDragged : public DragTest {
protected:
    /// Presses inside the window, has it move, goes to the left edge and lets go.
    /// @return false when the program does not answer
    bool dragByItself(TestWindow& moving, std::uint8_t button, const PixelRect& to) {
        const PixelRect frame = moving.frame();
        DragHand hand(desktop().input(), button);
        hand.press(frame.x + frame.width / 2, frame.y + frame.height / 2);
        // The program has to see the press before the window moves.
        const bool answered = desktop().settle();
        moving.place(to);
        forget();
        hand.moveTo(2, 500);
        hand.letGo();
        return answered;
    }

    void expectNoDrag(TestWindow& moving, std::uint8_t button, const PixelRect& to) {
        ASSERT_TRUE(dragByItself(moving, button, to));
        EXPECT_TRUE(isLeftAlone(moving.id()));
        EXPECT_EQ(highlight().timesShown(), 0);
        EXPECT_EQ(moving.frame(), to);
    }

    static constexpr PixelRect moved{520, 330, 700, 450};
};

class DesktopWindow : public WhatIsDragged {};

TEST_P(WhatIsDragged, theFirstButtonAloneDrags) {
    start();
    for (const std::uint8_t button : {std::uint8_t{2}, std::uint8_t{3}}) {
        SCOPED_TRACE("button " + std::to_string(button));
        ASSERT_TRUE(prepare());
        expectNoDrag(window(), button, moved);
    }
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(dragByItself(window(), 1, moved));
    EXPECT_TRUE(snaps(area("left")));
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(WhatIsDragged, theFirstButtonOfALeftHandedMouseIsItsRightOne) {
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
    expectNoDrag(window(), 1, moved);
    ASSERT_TRUE(prepare());
    DragHand right(input, 3, [this] { return awaitProgram(); });
    ASSERT_TRUE(right.grip(window()));
    right.moveTo(2, 500);
    right.letGo();
    EXPECT_TRUE(snaps(area("left")));
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(WhatIsDragged, panelsStayWhereTheyAre) {
    SnapDesktop::Setup setup = setupOn(MonitorLayout::landscape());
    setup.panel = 0;
    start(setup);
    ASSERT_TRUE(prepare());
    PixelRect higher = desktop().panel().frame();
    higher.y -= 100;
    expectNoDrag(desktop().panel(), 1, higher);
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(DesktopWindow, staysWhereItIs) {
    start();
    TestWindow::Options options;
    options.kind = TestWindow::Kind::desktop;
    options.title = "desktop";
    options.area = {0, 0, 1920, 1080};
    TestWindow background(desktop().desktop().display(), options);
    background.map();
    ASSERT_TRUE(prepare({1300, 100, 500, 300}));
    expectNoDrag(background, 1, {0, 30, 1920, 1080});
    EXPECT_EQ(desktop().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, WhatIsDragged, testing::ValuesIn(WindowManager::kinds), nameOf);

// Under kwin the window by which the program is asked whether it has seen the press does not always
// answer while the button is held on the desktop.
INSTANTIATE_TEST_SUITE_P(Desktop, DesktopWindow,
                         testing::Values(WindowManager::Kind::openbox, WindowManager::Kind::xfwm4,
                                         WindowManager::Kind::metacity),
                         nameOf);

}  // namespace
}  // namespace lumatile::desktop
