// What the hand does while the program has to wait for its turn, on every session.

#include <gtest/gtest.h>
#include <signal.h>

#include <optional>

#include "tests/desktop/dragging/DragTest.h"
#include "tests/desktop/dragging/SessionDragTest.h"

namespace lumatile::desktop {
namespace {

/// The program, stopped for as long as this lives.
class HeldProgram {
public:
    explicit HeldProgram(pid_t pid) : pid_(pid) { kill(pid_, SIGSTOP); }
    HeldProgram(const HeldProgram&) = delete;
    HeldProgram& operator=(const HeldProgram&) = delete;
    ~HeldProgram() { kill(pid_, SIGCONT); }

private:
    pid_t pid_;
};

class LateHearing : public SessionDragTest {
protected:
    /// From the title bar to the left edge, faster than the program can follow.
    testing::AssertionResult dragWhileProgramIsHeld(bool release) {
        const HeldProgram held(desk().program().pid());
        if (!fastHand_) {
            fastHand_.emplace(desk());
        }
        const PixelRect before = window().frame();
        if (!fastHand_->grip(before, [&] { return window().frame() != before; })) {
            return testing::AssertionFailure() << "the window does not follow";
        }
        fastHand_->moveTo(2, 500);
        if (release) {
            fastHand_->letGo();
        }
        return testing::AssertionSuccess();
    }

private:
    // One that does not wait for the program, and the same in all rounds: it never presses twice on
    // one spot, which window managers take for a double click.
    std::optional<PointerHand> fastHand_;
};

TEST_P(LateHearing, ofADragThatHasBegunSeesItWhole) {
    start();
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(prepare());
        ASSERT_TRUE(dragWhileProgramIsHeld(false));
        EXPECT_TRUE(highlight().waitUntilAt(area("left")));
        desk().buttonUp(1);
        EXPECT_TRUE(snaps(area("left")));
    }
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(prepare());
        ASSERT_TRUE(dragWhileProgramIsHeld(true));
        EXPECT_TRUE(snaps(area("left"))) << "a drop that is over happens all the same";
    }
    EXPECT_EQ(desk().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, LateHearing, testing::ValuesIn(sessionKinds()), nameOfSession);

/// A pointer of X that remote controls and scripts move tells of no movement.
class WarpedDrag : public DragTest {
protected:
    void warp(int x, int y) {
        InputDriver& input = desktop().input();
        xcb_warp_pointer(input.connection(), XCB_NONE, input.root(), 0, 0, 0, 0,
                         static_cast<std::int16_t>(x), static_cast<std::int16_t>(y));
        input.roundTrip();
    }
};

TEST_P(WarpedDrag, isFollowed) {
    start();
    ASSERT_TRUE(prepare());
    const PixelRect frame = window().frame();
    warp(frame.x + frame.width / 2, frame.y + 10);
    desktop().input().buttonDown();
    ASSERT_TRUE(awaitProgram());
    int step = 0;
    ASSERT_TRUE(XClient::waitUntil([&] {
        ++step;
        warp(frame.x + frame.width / 2 - 10 - step % 2, frame.y + 30);
        return window().frame() != frame;
    }));
    warp(2, 500);
    EXPECT_TRUE(highlight().waitUntilAt(area("left")));
    desktop().input().buttonUp();
    EXPECT_TRUE(snaps(area("left")));
    EXPECT_EQ(desktop().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, WarpedDrag, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
