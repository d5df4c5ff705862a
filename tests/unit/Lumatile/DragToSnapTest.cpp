#include "Lumatile/DragToSnap.h"

#include <gtest/gtest.h>

#include "tests/unit/Lumatile/DesktopWithConductor.h"

namespace lumatile {
namespace {

const Rect opened{300, 300, 640, 480};
const Rect leftHalf{0, 24, 960, 1080};
const Rect wholeScreen{0, 24, 1920, 1080};

struct DesktopWithMouse : DesktopWithConductor {
    explicit DesktopWithMouse(std::string_view settings = noProtection)
        : DesktopWithConductor(settings) {
        window = open(editor, opened);
    }

    /// Takes the window by its title.
    void grip() {
        const Rect frame = this->frame(window).value_or(Rect{});
        mouse.press({frame.x + 200, frame.y + 5});
    }

    /// Takes the window by its title, there, and lets go.
    void drag(const Point& to) {
        grip();
        mouse.moveTo(to);
        mouse.release();
    }

    WindowID window{};
};

TEST(DragToSnap, aWindowDraggedToAnEdgeSnaps) {
    DesktopWithMouse desk;
    desk.grip();
    desk.mouse.moveTo({600, 500});
    EXPECT_FALSE(desk.highlight->visible());
    desk.mouse.moveTo({3, 500});
    EXPECT_EQ(desk.highlight->visible(), leftHalf);
    EXPECT_NE(desk.frame(desk.window), leftHalf) << "not before the release";
    desk.mouse.release();
    EXPECT_EQ(desk.frame(desk.window), leftHalf);
    EXPECT_FALSE(desk.highlight->visible());
}

TEST(DragToSnap, everyEdgeAndCornerOfBothScreens) {
    struct {
        Point to;
        Rect becomes;
    } const cases[] = {
        {{1, 500}, leftHalf},
        {{1, 30}, {0, 24, 960, 540}},
        {{900, 10}, wholeScreen},
        {{1, 1100}, {0, 564, 960, 540}},
        {{300, 1101}, {0, 24, 640, 1080}},
        {{900, 1101}, {640, 24, 640, 1080}},
        {{1500, 1101}, {1280, 24, 640, 1080}},
        {{1918, 500}, {960, 24, 960, 1080}},
        {{1918, 30}, {960, 24, 960, 540}},
        {{1918, 1100}, {960, 564, 960, 540}},
        {{1921, 900}, {1920, 0, 540, 1920}},
        {{1921, 3}, {1920, 0, 540, 960}},
        {{2400, 3}, {1920, 0, 1080, 1920}},
        {{2998, 3}, {2460, 0, 540, 960}},
        {{2998, 900}, {2460, 0, 540, 1920}},
        {{2998, 1918}, {2460, 960, 540, 960}},
        {{2400, 1918}, {1920, 960, 1080, 960}},
        {{1921, 1918}, {1920, 960, 540, 960}},
    };
    for (const auto& [to, becomes] : cases) {
        DesktopWithMouse desk;
        desk.plugPortrait();
        desk.drag(to);
        EXPECT_EQ(desk.frame(desk.window), becomes) << to.x << ", " << to.y;
    }
}

TEST(DragToSnap, aReleaseInTheMiddleLeavesTheWindowThere) {
    DesktopWithMouse desk;
    desk.grip();
    desk.mouse.moveTo({3, 500});
    desk.mouse.moveTo({700, 505});
    desk.mouse.release();
    EXPECT_EQ(desk.frame(desk.window), (Rect{500, 500, 640, 480}));
}

TEST(DragToSnap, aResizeAtTheEdgeAndARightButtonNeverSnap) {
    DesktopWithMouse desk;
    desk.mouse.press({935, 775}, SimulatedMouse::Grip::resize);
    desk.mouse.moveTo({1919, 775});
    EXPECT_TRUE(desk.highlight->shown().empty());
    desk.mouse.release();
    EXPECT_EQ(desk.frame(desk.window), (Rect{300, 300, 1624, 480}));
    desk.mouse.dragWithRightButton({400, 305}, {1, 500});
    EXPECT_TRUE(desk.highlight->shown().empty());
}

TEST(DragToSnap, panelsAreNotDragged) {
    DesktopWithMouse desk;
    for (const std::string subrole : {"AXDock", "AXDesktop", "AXMenu"}) {
        SimulatedWindowTraits traits;
        traits.frame = {900, 600, 300, 200};
        traits.subrole = subrole;
        const WindowID panel = desk.open(desk.editor, traits);
        desk.mouse.press({950, 650});
        desk.mouse.moveTo({2, 500});
        EXPECT_TRUE(desk.highlight->shown().empty()) << subrole;
        desk.mouse.release();
        EXPECT_EQ(desk.frame(panel), (Rect{-48, 450, 300, 200}));
        desk.programs.close(panel);
    }
    SimulatedWindowTraits dialog;
    dialog.frame = {900, 600, 300, 200};
    dialog.subrole = AttributeName::dialogSubrole;
    const WindowID id = desk.open(desk.editor, dialog);
    desk.mouse.press({950, 650});
    desk.mouse.moveTo({2, 500});
    desk.mouse.release();
    EXPECT_EQ(desk.frame(id), leftHalf) << "dialogs are";
}

TEST(DragToSnap, theDropTakesTheHoursJitterAndTheHomeDoesNot) {
    DesktopWithMouse desk(R"({"orbitAmplitude":1,"orbitStepInterval":5,"orbitWaitForPause":false,)"
                          R"("jitterTolerance":6,"idleDimEnabled":false})");
    const JitterPolicy policy{6, 3600};
    const Rect adjusted = policy.adjust(leftHalf, wholeScreen, desk.runLoop.now());
    ASSERT_NE(adjusted, leftHalf);
    desk.grip();
    desk.mouse.moveTo({3, 500});
    EXPECT_EQ(desk.highlight->visible(), leftHalf);
    desk.mouse.release();
    EXPECT_EQ(desk.frame(desk.window), adjusted);
    EXPECT_EQ(desk.home(desk.window), leftHalf);
    // The next step adds the orbit alone.
    desk.advance(5.5);
    EXPECT_EQ(desk.frame(desk.window), adjusted.offsetBy(0, -1));
}

TEST(DragToSnap, theFrameThatRestoreBringsIsNotTouched) {
    DesktopWithMouse desk;
    desk.run("command.right");
    EXPECT_EQ(desk.remembered(desk.window), opened);
    desk.drag({3, 500});
    EXPECT_EQ(desk.frame(desk.window), leftHalf);
    EXPECT_EQ(desk.remembered(desk.window), opened);
}

TEST(DragToSnap, thePreferenceSwitchesItAtTheStartAndAtEveryChange) {
    DesktopWithMouse desk;
    const auto shows = [&] {
        const std::size_t before = desk.highlight->shown().size();
        desk.dragTo(desk.window, opened);
        desk.drag({3, 500});
        return desk.highlight->shown().size() > before;
    };
    EXPECT_TRUE(shows()) << "absent counts as on";
    desk.preferences.storeOnDisk(DragToSnap::preferenceKey, false);
    desk.runLoop.settle();
    EXPECT_FALSE(shows());
    desk.preferences.storeOnDisk(DragToSnap::preferenceKey, Bytes("false"));
    desk.runLoop.settle();
    EXPECT_TRUE(shows()) << "what is no boolean counts as on";
    desk.preferences.setBoolean(DragToSnap::preferenceKey, false);
    desk.runLoop.settle();
    EXPECT_FALSE(shows());
    desk.start();
    EXPECT_FALSE(shows()) << "read at the start";
    desk.preferences.setBoolean(DragToSnap::preferenceKey, true);
    desk.runLoop.settle();
    EXPECT_TRUE(shows());
}

TEST(DragToSnap, switchedOffInMidDragNothingMoreIsShownAndTheReleaseResets) {
    DesktopWithMouse desk;
    desk.grip();
    desk.mouse.moveTo({3, 500});
    desk.preferences.storeOnDisk(DragToSnap::preferenceKey, false);
    desk.runLoop.settle();
    desk.mouse.moveTo({3, 26});
    EXPECT_EQ(desk.highlight->visible(), leftHalf);
    desk.mouse.release();
    EXPECT_FALSE(desk.highlight->visible());
    EXPECT_EQ(desk.conductor->dragToSnap().controller()->state(), DragSnapController::State::idle);
}

TEST(DragToSnap, aWindowClosedInMidDragIsNoTrouble) {
    DesktopWithMouse desk;
    desk.grip();
    desk.mouse.moveTo({3, 500});
    desk.programs.close(desk.window);
    desk.mouse.moveTo({3, 26});
    desk.mouse.release();
    EXPECT_FALSE(desk.highlight->visible());
    EXPECT_TRUE(desk.log.lines().empty());
}

TEST(DragToSnap, aLostReleaseEndsWithTheNextPress) {
    DesktopWithMouse desk;
    desk.grip();
    desk.mouse.moveTo({3, 500});
    desk.mouse.loseRelease();
    desk.mouse.release();
    EXPECT_EQ(desk.highlight->visible(), leftHalf);
    desk.mouse.press({1500, 900});
    desk.mouse.release();
    EXPECT_FALSE(desk.highlight->visible());
    EXPECT_NE(desk.frame(desk.window), leftHalf);
}

TEST(DragToSnap, worksOnlyWhileTheFeaturesRun) {
    DesktopWithMouse desk;
    desk.grip();
    desk.mouse.moveTo({3, 500});
    desk.conductor->stopFeatures();
    EXPECT_FALSE(desk.highlight->visible()) << "a drag under way comes to nothing";
    desk.mouse.release();
    EXPECT_NE(desk.frame(desk.window), leftHalf);
    EXPECT_EQ(desk.mouse.taps(), 0U);
    desk.conductor->startFeatures();
    desk.conductor->startFeatures();
    EXPECT_EQ(desk.mouse.taps(), 1U);
    desk.dragTo(desk.window, opened);
    desk.drag({3, 500});
    EXPECT_EQ(desk.frame(desk.window), leftHalf);
}

TEST(DragToSnap, theDesktopLeavesDropsToTheProgramOnlyWhileItTakesThem) {
    DesktopWithMouse desk;
    EXPECT_TRUE(desk.mouse.isTakenFromDesktop());
    desk.preferences.setBoolean(DragToSnap::preferenceKey, false);
    desk.runLoop.settle();
    EXPECT_FALSE(desk.mouse.isTakenFromDesktop());
    desk.preferences.setBoolean(DragToSnap::preferenceKey, true);
    desk.runLoop.settle();
    EXPECT_TRUE(desk.mouse.isTakenFromDesktop());
    desk.conductor->stopFeatures();
    EXPECT_FALSE(desk.mouse.isTakenFromDesktop());
    desk.preferences.setBoolean(DragToSnap::preferenceKey, false);
    desk.conductor->startFeatures();
    EXPECT_FALSE(desk.mouse.isTakenFromDesktop());
}

TEST(DragToSnap, withoutTheMouseShortcutsGoOnWorking) {
    DesktopWithMouse desk;
    desk.conductor->stopFeatures();
    desk.mouse.setRefusing(true);
    desk.conductor->startFeatures();
    EXPECT_EQ(desk.log.lines().size(), 1U);
    EXPECT_EQ(desk.press({123, 6144}), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.frame(desk.window), leftHalf);
}

TEST(DragToSnap, aWindowManagerThatAnswersLateStillLosesToTheDrop) {
    DesktopWithMouse desk;
    desk.windowManager.policy.latencySeconds = 0.05;
    desk.drag({3, 500});
    EXPECT_EQ(desk.frame(desk.window), leftHalf);
    EXPECT_EQ(desk.home(desk.window), leftHalf);
}

}  // namespace
}  // namespace lumatile
