#include "drag_snap/DragSnapController.h"

#include <gtest/gtest.h>

#include "tests/unit/drag_snap/DragDesk.h"

namespace lumatile {
namespace {

using State = DragSnapController::State;

const Rect leftHalf{0, 24, 1200, 1200};
const Rect topLeft{0, 24, 1200, 600};
const Rect whole{0, 24, 2400, 1200};

TEST(DragSnapController, aWindowDroppedAtAnEdgeGoesToItsArea) {
    DragDesk desk;
    desk.press();
    EXPECT_EQ(desk.controller.state(), State::armed);
    desk.drag({300, 700});
    EXPECT_EQ(desk.controller.state(), State::armed) << "far from every edge";
    EXPECT_FALSE(desk.highlight->visible);
    desk.drag({2, 700});
    EXPECT_EQ(desk.controller.state(), State::dragging);
    EXPECT_EQ(desk.highlight->visible, leftHalf);
    EXPECT_EQ(desk.controller.currentTarget(), leftHalf);
    desk.controller.dragEnded();
    EXPECT_EQ(desk.window->placed, std::vector{leftHalf});
    EXPECT_FALSE(desk.highlight->visible);
    EXPECT_EQ(desk.controller.state(), State::idle);
    EXPECT_FALSE(desk.controller.currentTarget());
}

TEST(DragSnapController, aPressOnTheDesktopStaysIdle) {
    DragDesk desk;
    desk.controller.dragBegan({2000, 1100});
    EXPECT_EQ(desk.controller.state(), State::idle);
    desk.window->current = {0, 24, 800, 600};
    desk.controller.dragMoved({2, 700});
    EXPECT_EQ(desk.controller.state(), State::idle);
    desk.controller.dragEnded();
    EXPECT_TRUE(desk.highlight->shown.empty());
    EXPECT_TRUE(desk.window->placed.empty());
    EXPECT_EQ(desk.highlight->hides, 1) << "the end hides always";
}

TEST(DragSnapController, aResizeNeverShowsNorSnaps) {
    DragDesk desk;
    desk.controller.dragBegan({602, 995});
    desk.window->current = {1, 400, 1399, 600};
    desk.controller.dragMoved({1, 995});
    EXPECT_EQ(desk.controller.state(), State::armed);
    desk.window->current = {1, 400, 1399, 823};
    desk.controller.dragMoved({1, 1223});
    EXPECT_TRUE(desk.highlight->shown.empty());
    desk.controller.dragEnded();
    EXPECT_TRUE(desk.window->placed.empty());
}

TEST(DragSnapController, aClickThatMovesTheWindowByLessThanAPixelIsNoDrag) {
    DragDesk desk;
    desk.window->current = {0, 400, 800, 600};
    desk.controller.dragBegan({2, 405});
    desk.controller.dragMoved({2, 405});
    desk.window->current.x = 0.99;
    desk.controller.dragMoved({3, 405});
    EXPECT_EQ(desk.controller.state(), State::armed);
    desk.window->current.x = 1;
    desk.controller.dragMoved({3, 405});
    EXPECT_EQ(desk.controller.state(), State::dragging);
}

TEST(DragSnapController, releasingWhileArmedSnapsNothing) {
    DragDesk desk;
    desk.press();
    desk.drag({900, 700});
    desk.controller.dragEnded();
    EXPECT_TRUE(desk.window->placed.empty());
    EXPECT_EQ(desk.controller.state(), State::idle);
    desk.controller.dragMoved({2, 700});
    EXPECT_TRUE(desk.highlight->shown.empty()) << "the next movement belongs to no drag";
}

TEST(DragSnapController, eightPixelsAreNearAnEdge) {
    struct {
        Point near;
        Point far;
    } const edges[] = {
        {{8, 700}, {8.01, 700}},
        {{2392, 700}, {2391.99, 700}},
        {{1000, 32}, {1000, 32.01}},
        {{1000, 1216}, {1000, 1215.99}},
    };
    for (const auto& [near, far] : edges) {
        DragDesk desk;
        desk.press();
        desk.drag(far);
        EXPECT_FALSE(desk.highlight->visible) << far.x << ", " << far.y;
        desk.drag(near);
        EXPECT_TRUE(desk.highlight->visible) << near.x << ", " << near.y;
    }
}

TEST(DragSnapController, aPointerOnTheFarEdgeCountsAsOnItsLastHalfPixel) {
    DragDesk desk;
    desk.screens = {DragDesk::wide};
    desk.press();
    desk.drag({2400, 700});
    EXPECT_EQ(desk.highlight->visible, (Rect{1200, 24, 1200, 1200}));
    desk.drag({1000, 1224});
    EXPECT_EQ(desk.highlight->visible, (Rect{800, 24, 800, 1200})) << "the centre third";
    desk.drag({5000, 5000});
    EXPECT_EQ(desk.highlight->visible, (Rect{1200, 624, 1200, 600})) << "the corner";
}

TEST(DragSnapController, aPointerOnThePanelIsAtTheEdgeBelowIt) {
    DragDesk desk;
    desk.press();
    desk.drag({1000, 3});
    EXPECT_EQ(desk.highlight->visible, whole);
}

TEST(DragSnapController, alongAnEdgeTheTargetIsShownOnceAndAnewWhenItIsAnother) {
    DragDesk desk;
    desk.press();
    for (double y = 900; y > 130; y -= 10) {
        desk.drag({1, y});
    }
    EXPECT_EQ(desk.highlight->shown, std::vector{leftHalf});
    for (double y = 120; y > 30; y -= 10) {
        desk.drag({1, y});
    }
    EXPECT_EQ(desk.highlight->shown, (std::vector{leftHalf, topLeft}));
    EXPECT_EQ(desk.highlight->hides, 0) << "it moves, it does not flicker";
}

TEST(DragSnapController, awayFromTheEdgeTheTargetGoesAndAReleaseSnapsNothing) {
    DragDesk desk;
    desk.press();
    desk.drag({1, 700});
    desk.drag({300, 700});
    EXPECT_FALSE(desk.highlight->visible);
    EXPECT_EQ(desk.highlight->hides, 1);
    desk.drag({400, 700});
    EXPECT_EQ(desk.highlight->hides, 1) << "nothing more to hide";
    EXPECT_EQ(desk.controller.state(), State::dragging);
    desk.controller.dragEnded();
    EXPECT_TRUE(desk.window->placed.empty());
}

TEST(DragSnapController, aTargetThatGoesAndComesIsShownAgain) {
    DragDesk desk;
    desk.press();
    desk.drag({1, 700});
    desk.drag({300, 700});
    desk.drag({1, 700});
    EXPECT_EQ(desk.highlight->shown, (std::vector{leftHalf, leftHalf}));
}

TEST(DragSnapController, edgesWithoutACommandShowNothing) {
    DragDesk desk;
    desk.commands.clear();
    desk.press();
    desk.drag({1, 700});
    EXPECT_EQ(desk.controller.state(), State::armed);
    EXPECT_TRUE(desk.highlight->shown.empty());
    desk.commands = BuiltInCommands::defaults();
    desk.drag({1, 701});
    EXPECT_EQ(desk.highlight->visible, leftHalf) << "the commands of the moment count";
    desk.commands.clear();
    desk.drag({1, 702});
    EXPECT_FALSE(desk.highlight->visible);
}

TEST(DragSnapController, withoutAScreenThereIsNoTarget) {
    DragDesk desk;
    desk.press();
    desk.drag({1, 700});
    desk.screens.clear();
    desk.drag({1, 701});
    EXPECT_FALSE(desk.highlight->visible);
    desk.controller.dragEnded();
    EXPECT_TRUE(desk.window->placed.empty());
}

TEST(DragSnapController, theSeamBetweenTwoScreensIsAnEdgeOfBoth) {
    DragDesk desk;
    desk.press();
    desk.drag({2398, 700});
    EXPECT_EQ(desk.highlight->visible, (Rect{1200, 24, 1200, 1200}));
    desk.drag({2401, 700});
    EXPECT_EQ(desk.highlight->visible, (Rect{2400, 0, 600, 2400})) << "portrait: its left half";
    desk.drag({3000, 2399});
    EXPECT_EQ(desk.highlight->visible, (Rect{2400, 1200, 1200, 1200}));
    desk.controller.dragEnded();
    EXPECT_EQ(desk.window->placed, (std::vector{Rect{2400, 1200, 1200, 1200}}));
}

TEST(DragSnapController, theTargetIsAdjustedAtTheDropAndToldAsItWasSet) {
    DragDesk desk;
    std::optional<ScreenContext> context;
    desk.controller.adjustTarget = [&](const Rect& frame, const ScreenContext& screen) {
        context = screen;
        return Rect{frame.x, frame.y, frame.width + 2, frame.height};
    };
    std::vector<Rect> told;
    desk.controller.onSnap = [&](const std::shared_ptr<WindowControlling>& window,
                                 const Rect& frame) {
        EXPECT_EQ(window, desk.window);
        EXPECT_EQ(window->frame(), frame) << "told after the window is there";
        told.push_back(frame);
    };
    desk.press();
    desk.drag({1, 700});
    EXPECT_EQ(desk.highlight->visible, leftHalf) << "shown as it is before";
    EXPECT_FALSE(context);
    desk.controller.dragEnded();
    const Rect adjusted{0, 24, 1202, 1200};
    EXPECT_EQ(context, ScreenContext::of(DragDesk::wide));
    EXPECT_EQ(desk.window->placed, std::vector{adjusted});
    EXPECT_EQ(told, std::vector{adjusted});
}

TEST(DragSnapController, theSwitchStopsFurtherUpdatesAndTheReleaseStillResets) {
    DragDesk desk;
    desk.press();
    desk.drag({1, 700});
    desk.controller.tilingByEdgeDragEnabled = false;
    desk.drag({1, 60});
    EXPECT_EQ(desk.highlight->shown, std::vector{leftHalf});
    desk.controller.dragEnded();
    EXPECT_EQ(desk.controller.state(), State::idle);
    EXPECT_FALSE(desk.highlight->visible);
    desk.press();
    desk.drag({1, 700});
    EXPECT_EQ(desk.highlight->shown.size(), 1U);
    EXPECT_EQ(desk.controller.state(), State::armed);
}

TEST(DragSnapController, aWindowWhoseFrameCannotBeReadIsNeverDragged) {
    DragDesk desk;
    desk.window->isReadable = false;
    desk.press();
    EXPECT_EQ(desk.controller.state(), State::armed);
    desk.window->isReadable = true;
    desk.drag({1, 700});
    EXPECT_EQ(desk.controller.state(), State::armed) << "where it began is not known";
    desk.controller.dragEnded();
    desk.press();
    desk.window->isReadable = false;
    desk.drag({1, 700});
    EXPECT_EQ(desk.controller.state(), State::armed);
}

TEST(DragSnapController, aPressWithoutTheReleaseBeforeItBeginsAnew) {
    DragDesk desk;
    desk.press();
    desk.drag({1, 700});
    desk.press();
    EXPECT_EQ(desk.controller.state(), State::armed);
    EXPECT_FALSE(desk.controller.currentTarget());
    desk.controller.dragEnded();
    EXPECT_TRUE(desk.window->placed.empty());
    EXPECT_FALSE(desk.highlight->visible);
}

TEST(DragSnapController, snapsAlsoWhereNobodyCanShowIt) {
    DragDesk desk;
    desk.highlight.reset();
    desk.press();
    desk.drag({1, 700});
    desk.controller.dragEnded();
    EXPECT_EQ(desk.window->placed, std::vector{leftHalf});
}

TEST(ScreenContext, isPortraitOnlyWhenStrictlyNarrowerThanHigh) {
    EXPECT_EQ(ScreenContext::of({0, 0, 100, 100}).orientation, Orientation::horizontal);
    EXPECT_EQ(ScreenContext::of({0, 0, 99, 100}).orientation, Orientation::vertical);
    EXPECT_EQ(ScreenContext::of({0, 0, 101, 100}).orientation, Orientation::horizontal);
    EXPECT_NE(ScreenContext::of({0, 0, 99, 100}), ScreenContext::of({1, 0, 99, 100}));
}

}  // namespace
}  // namespace lumatile
