#include <gtest/gtest.h>

#include <string>

#include "tests/unit/Lumatile/DesktopWithConductor.h"

namespace lumatile {
namespace {

// A simulated desktop starts in time slot 472 222 of an hour, whose offset at a tolerance of 3 px
// is
// (-3, +2): 472222 × 31153 mod 65536 = 3902 and 472222 × 40503 mod 65536 = 53746, so
// 3 × (7804/65535 - 1) = -2.64 and 3 × (107492/65535 - 1) = 1.92. The next slot's is (0, 0).
constexpr std::string_view recommended = "{}";
constexpr double toNextSlot = 3600 - 800;

struct Row {
    const char* nameKey = nullptr;
    Rect target;
    Rect jittered;
};

const Row rows[] = {
    {"command.left", {0, 24, 960, 1080}, {0, 24, 957, 1080}},
    {"command.right", {960, 24, 960, 1080}, {957, 24, 963, 1080}},
    {"command.top", {0, 24, 1920, 540}, {0, 24, 1920, 542}},
    {"command.bottom", {0, 564, 1920, 540}, {0, 566, 1920, 538}},
    {"command.bottomRight", {960, 564, 960, 540}, {957, 566, 963, 538}},
    {"command.centerThird", {640, 24, 640, 1080}, {637, 24, 640, 1080}},
    {"command.centerTwoThirds", {320, 24, 1280, 1080}, {317, 24, 1280, 1080}},
    {"command.maximize", {0, 24, 1920, 1080}, {0, 24, 1920, 1080}},
};

TEST(SnapJitter, theInnerEdgesOfAnAreaAreShiftedAndItsHomeIsNot) {
    for (const Row& row : rows) {
        DesktopWithConductor desk(recommended);
        const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
        desk.run(row.nameKey);
        EXPECT_EQ(desk.frame(window), row.jittered) << row.nameKey;
        EXPECT_EQ(desk.home(window), row.target) << row.nameKey;
        EXPECT_EQ(desk.conductor->orbit().tracked(desk.key(window))->lastApplied, row.jittered);
        EXPECT_EQ(desk.conductor->orbit().trackedCount(), 1U);
    }
}

TEST(SnapJitter, twoHalvesGoOnMeetingAtTheirSeam) {
    DesktopWithConductor desk(recommended);
    const WindowID left = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.run("command.left");
    const WindowID right = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.run("command.right");
    EXPECT_EQ(desk.frame(left)->maxX(), desk.frame(right)->minX());
}

TEST(SnapJitter, theOtherKindsAreNotShifted) {
    DesktopWithConductor desk(recommended);
    desk.plugPortrait();
    const Rect before{300, 300, 640, 480};
    const WindowID window = desk.open(desk.editor, before);
    desk.run("command.center");
    EXPECT_EQ(desk.frame(window), (Rect{640, 324, 640, 480}));
    EXPECT_EQ(desk.home(window), desk.frame(window));
    desk.run("command.restore");
    EXPECT_EQ(desk.frame(window), before);
    desk.dragTo(window, {480, 294, 960, 540});
    desk.run("command.nextDisplay");
    EXPECT_EQ(desk.frame(window), (Rect{2190, 480, 540, 960}));
    EXPECT_EQ(desk.home(window), desk.frame(window));
}

TEST(SnapJitter, restoreBringsAJitteredFrameBackAsItWas) {
    DesktopWithConductor desk(recommended);
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.run("command.left");
    desk.run("command.top");
    desk.run("command.restore");
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 957, 1080}));
    // Restored, that is where it belongs.
    EXPECT_EQ(desk.home(window), (Rect{0, 24, 957, 1080}));
}

TEST(SnapJitter, theClockDecides) {
    DesktopWithConductor desk(recommended);
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.advance(toNextSlot - 1);
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 957, 1080}));
    desk.advance(1);
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 960, 1080}));
    desk.clock.jump(-3600);
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 957, 1080}));
}

TEST(SnapJitter, stoppingBringsASnappedWindowToItsHome) {
    DesktopWithConductor desk(recommended);
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.run("command.left");
    desk.conductor->stopFeatures();
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 960, 1080}));
    EXPECT_EQ(desk.conductor->orbit().trackedCount(), 0U);
}

TEST(SnapJitter, stoppingLeavesAWindowAloneThatTheUserHasMoved) {
    DesktopWithConductor desk(recommended);
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.run("command.left");
    desk.dragTo(window, {2, 24, 957, 1080});
    desk.conductor->stopFeatures();
    EXPECT_EQ(desk.frame(window), (Rect{2, 24, 957, 1080}));
    EXPECT_EQ(desk.conductor->orbit().trackedCount(), 0U);
}

TEST(SnapJitter, stoppingBringsHomeWhatIsWithinATouchOfWhereItWasPut) {
    DesktopWithConductor desk(recommended);
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.run("command.left");
    desk.dragTo(window, {1, 24, 957, 1080});
    desk.conductor->stopFeatures();
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 960, 1080}));
}

TEST(SnapJitter, stoppingSkipsWindowsThatAreGoneOrCannotBeRead) {
    DesktopWithConductor desk(recommended);
    const WindowID closed = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.run("command.left");
    const WindowID unreadable = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.run("command.left");
    const WindowID well = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.run("command.left");
    EXPECT_EQ(desk.conductor->orbit().trackedCount(), 3U);
    desk.programs.close(closed);
    desk.model(unreadable).faults.unreadable.emplace(AttributeName::size);
    desk.conductor->stopFeatures();
    EXPECT_EQ(desk.frame(unreadable), (Rect{0, 24, 957, 1080}));
    EXPECT_EQ(desk.frame(well), (Rect{0, 24, 960, 1080}));
}

TEST(SnapJitter, aSnapAfterTheFeaturesStoppedIsStillJitteredAndTracked) {
    DesktopWithConductor desk(recommended);
    desk.conductor->stopFeatures();
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 957, 1080}));
    EXPECT_EQ(desk.home(window), (Rect{0, 24, 960, 1080}));
}

TEST(SnapJitter, theDemonstrationModeShiftsByUpToTwentyPixelsAnewEveryTenSeconds) {
    DesktopWithConductor desk(recommended);
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.conductor->setExaggerated(true);
    // Slot 170 000 000: 20 × (2 × 30336/65535 - 1) = -1.48.
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 959, 1080}));
    // Slot 170 000 001: 20 × (2 × 61489/65535 - 1) = 17.53.
    desk.advance(10);
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 978, 1080}));
    EXPECT_EQ(desk.home(window), (Rect{0, 24, 960, 1080}));
    desk.conductor->setExaggerated(false);
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 957, 1080}));
}

TEST(SnapJitter, aMinimumSizeDoesNotKeepAWindowFromItsHomeCorner) {
    DesktopWithConductor desk(recommended);
    SimulatedWindowTraits traits;
    traits.frame = {300, 300, 1000, 700};
    traits.minimumContent = {1000, 700};
    const WindowID window = desk.open(desk.editor, traits);
    desk.run("command.bottomRight");
    EXPECT_EQ(desk.frame(window), (Rect{957, 566, 1000, 700}));
    desk.conductor->stopFeatures();
    EXPECT_EQ(desk.frame(window), (Rect{960, 564, 1000, 700}));
}

}  // namespace
}  // namespace lumatile
