#include <gmock/gmock.h>
#include <xcb/xtest.h>

#include <atomic>
#include <thread>
#include <utility>
#include <vector>

#include "tests/desktop/mouse/X11MouseTapTest.h"

// When the movements of a drag are told, and at what price.

namespace lumatile::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(X11MouseTapTest, movementsThatArriveTogetherAreToldAsOne) {
    input_.buttonDown();
    told();
    for (int x = 100; x < 600; ++x) {
        input_.movePointer(x, 200);
    }
    input_.roundTrip();
    connection_->synchronize();
    connection_->dispatch();
    EXPECT_THAT(std::exchange(told_, {}), ElementsAre(MouseEvent{dragged, {599, 200}}));
    // Presses and releases are not, however fast.
    input_.buttonUp();
    for (int click = 0; click < 3; ++click) {
        input_.buttonDown();
        input_.buttonUp();
    }
    std::vector<MouseEventType> types;
    for (const MouseEvent& event : told()) {
        types.push_back(event.type);
    }
    EXPECT_THAT(types, ElementsAre(up, down, up, down, up, down, up));
}

TEST_F(X11MouseTapTest, theLastOfManyMovementsIsTold) {
    input_.buttonDown();
    told();
    // The mouse does not wait until the tap has looked: movements happen before, while and after
    // the server answers where the pointer is. The last one of a round has none behind it that
    // would make up for it.
    constexpr int rounds = 200;
    for (int round = 0; round < rounds; ++round) {
        const int y = 100 + round;
        std::atomic<bool> isOver{false};
        std::thread mouse([&] {
            xcb_connection_t* const hand = input_.connection();
            for (int x = 100; x <= 200; ++x) {
                xcb_test_fake_input(hand, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, input_.root(),
                                    static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
                xcb_flush(hand);
            }
            isOver = true;
        });
        while (!isOver) {
            // Time flies, so that looks and events take turns again and again.
            connection_->dispatch();
            runLoop_.advance(frame_);
        }
        mouse.join();
        const std::vector<MouseEvent> events = told();
        ASSERT_FALSE(events.empty());
        const MouseEvent last{dragged, {200, static_cast<double>(y)}};
        ASSERT_EQ(events.back(), last) << "round " << round;
    }
}

TEST_F(X11MouseTapTest, aFastMouseIsLookedAtByTheTimerOnly) {
    input_.buttonDown();
    told();
    input_.movePointer(110, 100);
    deliver();
    EXPECT_THAT(std::exchange(told_, {}), ElementsAre(MouseEvent{dragged, {110, 100}}))
        << "the first one at once";
    deliver();
    for (int x = 111; x < 400; ++x) {
        input_.movePointer(x, 100);
    }
    input_.roundTrip();
    EXPECT_FALSE(isAnythingToRead()) << "movements do not wake the program up";
    deliver();
    EXPECT_THAT(told_, IsEmpty());
    look();
    EXPECT_THAT(std::exchange(told_, {}), ElementsAre(MouseEvent{dragged, {399, 100}}));
    input_.movePointer(500, 100);
    input_.roundTrip();
    EXPECT_FALSE(isAnythingToRead());
    look();
    EXPECT_THAT(std::exchange(told_, {}), ElementsAre(MouseEvent{dragged, {500, 100}}));
    // It rests, and its next movement is told at once again.
    EXPECT_THAT(told(), IsEmpty());
    input_.movePointer(600, 100);
    deliver();
    EXPECT_THAT(told_, ElementsAre(MouseEvent{dragged, {600, 100}}));
}

TEST_F(X11MouseTapTest, theReleaseComesAtOnceAndAfterTheMovementThatLedToIt) {
    input_.buttonDown();
    input_.roundTrip();
    deliver();
    input_.movePointer(110, 100);
    deliver();
    deliver();
    told_.clear();
    input_.movePointer(400, 100);
    input_.movePointer(0, 220);
    input_.buttonUp();
    deliver();
    EXPECT_THAT(std::exchange(told_, {}),
                ElementsAre(MouseEvent{dragged, {0, 220}}, MouseEvent{up, {0, 220}}));
    input_.buttonDown();
    deliver();
    EXPECT_THAT(told_, ElementsAre(MouseEvent{down, {0, 220}}));
}

TEST_F(X11MouseTapTest, aTimerRunsFromTheFirstMovementToTheReleaseOnly) {
    EXPECT_EQ(runLoop_.timerCount(), 0U);
    input_.buttonDown();
    deliver();
    EXPECT_EQ(runLoop_.timerCount(), 0U) << "held, but not moved";
    input_.movePointer(110, 100);
    deliver();
    EXPECT_EQ(runLoop_.timerCount(), 1U);
    rest();
    EXPECT_EQ(runLoop_.timerCount(), 1U) << "at rest it may still be moved by a program";
    input_.movePointer(120, 100);
    deliver();
    EXPECT_EQ(runLoop_.timerCount(), 1U);
    input_.buttonUp();
    deliver();
    EXPECT_EQ(runLoop_.timerCount(), 0U) << "released";
    input_.buttonDown();
    deliver();
    input_.movePointer(130, 100);
    deliver();
    EXPECT_EQ(runLoop_.timerCount(), 1U);
    tap_.reset();
    EXPECT_EQ(runLoop_.timerCount(), 0U) << "nobody wants to know";
}

// A pointer that is pushed against the edge of the screen stays where it is. That the mouse still
// moves is what the user means.
TEST_F(X11MouseTapTest, pushingAgainstAnEdgeIsToldAsMovement) {
    input_.buttonDown();
    told();
    input_.movePointer(0, 100);
    EXPECT_THAT(told(), ElementsAre(MouseEvent{dragged, {0, 100}}));
    const MouseEvent pushed{dragged, {0, 100}};
    for (int push = 0; push < 3; ++push) {
        input_.movePointer(0, 100);
        EXPECT_THAT(told(), ElementsAre(pushed)) << push;
    }
    // Without a rest in between: the look after the first push asks for movements again.
    input_.movePointer(0, 100);
    deliver();
    look();
    told_.clear();
    input_.movePointer(0, 100);
    deliver();
    EXPECT_THAT(told_, IsEmpty()) << "the next look is soon enough";
    look();
    EXPECT_THAT(told_, ElementsAre(pushed));
}

TEST_F(X11MouseTapTest, aPressThatIsHeardLateIsToldWhereItWas) {
    input_.movePointer(300, 200);
    told();
    input_.buttonDown();
    for (int step = 1; step <= 20; ++step) {
        input_.movePointer(300 + 5 * step, 200 + step);
    }
    EXPECT_THAT(told(), ElementsAre(MouseEvent{down, {300, 200}}, MouseEvent{dragged, {400, 220}}));
    input_.buttonUp();
    told();
    // A whole drag, and a click after it.
    input_.buttonDown();
    input_.movePointer(500, 300);
    input_.buttonUp();
    input_.movePointer(600, 400);
    input_.buttonDown();
    input_.buttonUp();
    EXPECT_THAT(told(), ElementsAre(MouseEvent{down, {400, 220}}, MouseEvent{dragged, {500, 300}},
                                    MouseEvent{up, {500, 300}}, MouseEvent{down, {600, 400}},
                                    MouseEvent{up, {600, 400}}));
}

TEST_F(X11MouseTapTest, aReleaseThatIsHeardLateIsToldWhereItWas) {
    input_.buttonDown();
    told();
    input_.movePointer(0, 220);
    told();
    input_.buttonUp();
    input_.movePointer(50, 230);
    input_.movePointer(300, 240);
    EXPECT_THAT(told(), ElementsAre(MouseEvent{up, {0, 220}}));
}

// As remote controls and scripts do it.
class WarpedPointerTest : public X11MouseTapTest {
protected:
    void warp(std::int16_t x, std::int16_t y) {
        xcb_warp_pointer(input_.connection(), XCB_NONE, input_.root(), 0, 0, 0, 0, x, y);
        input_.roundTrip();
    }
};

TEST_F(WarpedPointerTest, isKnownAtTheRelease) {
    input_.buttonDown();
    told();
    warp(0, 220);
    input_.buttonUp();
    EXPECT_THAT(told(), ElementsAre(MouseEvent{dragged, {0, 220}}, MouseEvent{up, {0, 220}}));
}

TEST_F(WarpedPointerTest, isFollowedFromTheFirstMoveOfAWindowOn) {
    const xcb_window_t window = xcb_generate_id(input_.connection());
    xcb_create_window(input_.connection(), XCB_COPY_FROM_PARENT, window, input_.root(), 0, 0, 50,
                      50, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, input_.screen().root_visual, 0,
                      nullptr);
    input_.roundTrip();
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_->get(), window, XCB_CW_EVENT_MASK, &mask);
    connection_->synchronize();
    const auto moveWindow = [&](std::uint32_t x) {
        xcb_configure_window(input_.connection(), window, XCB_CONFIG_WINDOW_X, &x);
    };
    moveWindow(1);
    deliver();
    EXPECT_EQ(runLoop_.timerCount(), 0U) << "no button";
    input_.buttonDown();
    told();
    warp(300, 200);
    moveWindow(2);
    deliver();
    EXPECT_THAT(std::exchange(told_, {}), ElementsAre(MouseEvent{dragged, {300, 200}}));
    rest();
    EXPECT_THAT(told_, IsEmpty());
    warp(0, 210);
    look();
    EXPECT_THAT(std::exchange(told_, {}), ElementsAre(MouseEvent{dragged, {0, 210}}))
        << "also after a rest";
    input_.buttonUp();
    EXPECT_THAT(told(), ElementsAre(MouseEvent{up, {0, 210}}));
    EXPECT_EQ(runLoop_.timerCount(), 0U);
}

}  // namespace
}  // namespace lumatile::desktop
