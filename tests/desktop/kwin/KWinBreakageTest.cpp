// KWin that dies while the program is in the middle of something. The program begins again as the
// same process, finds the new KWin and leaves nothing behind.

#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <memory>

#include "tests/desktop/kwin/PlasmaDesk.h"
#include "tests/desktop/support/kwin/OverheardOrders.h"

namespace lumatile::desktop {
namespace {

const Rect usual{200, 150, 700, 450};
const Rect leftHalf{0, 0, 960, 1080};

/// Windows are walked round a ring of radius 2, a step a second.
LumatileProcess::Settings stepping() {
    LumatileProcess::Settings settings;
    settings.oledSettings =
        R"({"orbitStepInterval":1,"orbitWaitForPause":false,"jitterEnabled":false,)"
        R"("idleDimEnabled":false})";
    return settings;
}

class KWinBreakage : public testing::Test {
protected:
    void start(const LumatileProcess::Settings& settings = {}) {
        desk_ = std::make_unique<PlasmaDesk>(KWinDesktop::Options{}, settings);
        orders_ = std::make_unique<OverheardOrders>(desk_->desktop().session(), desk_->probe());
        pid_ = desk_->program().pid();
        window_ = desk_->desktop().openWindow({});
        window_->place(usual);
    }

    /// The program has asked for a place of the window, and waits for what comes of it.
    bool isAsked() {
        return waitInSession([&] { return !orders_->placings(window_->id()).empty(); });
    }

    /// Its windows die with KWin.
    void crashAndRestart() {
        desk_->desktop().server().crash();
        window_->process().signal(SIGCONT);
        desk_->desktop().restart();
        window_ = desk_->desktop().openWindow({});
        window_->place(usual);
    }

    /// Whether the program works with the new KWin: it snaps, after some pressing, since it has to
    /// find it first.
    testing::AssertionResult snapsAgain() {
        constexpr int mostPresses = 40;
        for (int press = 0; press < mostPresses; ++press) {
            desk_->press("left");
            if (waitInSession([&] { return window_->frame() == leftHalf; },
                              Deadline::in(std::chrono::seconds(1)))) {
                return testing::AssertionSuccess();
            }
        }
        return testing::AssertionFailure() << "the window stays at " << window_->state() << "\n"
                                           << desk_->program().output();
    }

    void expectTheSameProgramEndsWell() {
        EXPECT_EQ(desk_->program().pid(), pid_);
        EXPECT_TRUE(desk_->program().isRunning());
        EXPECT_EQ(desk_->endProgram(), "");
        EXPECT_EQ(desk_->edges(), "true true") << "KWin's own snapping is given back";
    }

    std::unique_ptr<PlasmaDesk> desk_;
    std::unique_ptr<OverheardOrders> orders_;
    std::unique_ptr<NativeWindow> window_;
    pid_t pid_ = 0;
};

TEST_F(KWinBreakage, inTheMiddleOfASnap) {
    start();
    // A window that takes no size keeps the program waiting.
    window_->process().signal(SIGSTOP);
    desk_->press("left");
    ASSERT_TRUE(isAsked());
    ASSERT_NE(window_->frame(), leftHalf);
    crashAndRestart();
    EXPECT_TRUE(snapsAgain());
    desk_->press("restore");
    EXPECT_TRUE(reaches(*window_, usual));
    expectTheSameProgramEndsWell();
}

TEST_F(KWinBreakage, inTheMiddleOfADrag) {
    start();
    const auto drag = [&] {
        desk_->input().movePointer(usual.x + 300, usual.y + 10);
        desk_->input().buttonDown();
        desk_->input().movePointer(700, 400);
        const bool isMoving = waitInSession([&] { return window_->state().moving; });
        desk_->input().movePointer(300, 500);
        desk_->input().movePointer(1, 540);
        return isMoving;
    };
    ASSERT_TRUE(drag());
    crashAndRestart();
    EXPECT_TRUE(snapsAgain());
    window_->place(usual);
    // Neither is the old drag still under way, nor the mouse forgotten.
    ASSERT_TRUE(drag());
    desk_->input().buttonUp();
    EXPECT_TRUE(reaches(*window_, leftHalf));
    EXPECT_FALSE(window_->state().tiled);
    expectTheSameProgramEndsWell();
}

TEST_F(KWinBreakage, inTheMiddleOfAStep) {
    start(stepping());
    ASSERT_TRUE(waitInSession([&] { return window_->frame() != usual; }));
    orders_->forget();
    ASSERT_TRUE(isAsked());
    crashAndRestart();
    // The ring begins anew round the place of the new window.
    EXPECT_TRUE(reaches(*window_, usual.offsetBy(-1, -2)));
    EXPECT_TRUE(reaches(*window_, usual.offsetBy(0, -2)));
    EXPECT_EQ(desk_->program().pid(), pid_);
    EXPECT_EQ(desk_->endProgram(), "");
    EXPECT_TRUE(reaches(*window_, usual)) << "nothing is left shifted";
}

}  // namespace
}  // namespace lumatile::desktop
