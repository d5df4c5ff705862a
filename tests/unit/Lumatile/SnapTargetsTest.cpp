#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "tests/unit/Lumatile/DesktopWithConductor.h"

namespace lumatile {
namespace {

constexpr std::uint32_t controlOption = 6144;
constexpr std::uint32_t controlOptionCommand = 6400;

/// One shortcut and where it puts a window, in pixels from the visible frame's top-left corner: on
/// a landscape frame of 1920 × 1080 and on a portrait frame of 1080 × 1920.
struct Row {
    const char* nameKey = nullptr;
    std::uint32_t keyCode = 0;
    Rect landscape;
    Rect portrait;

    friend std::ostream& operator<<(std::ostream& stream, const Row& row) {
        return stream << row.nameKey;
    }
};

constexpr Row rows[] = {
    {"command.left", 123, {0, 0, 960, 1080}, {0, 0, 540, 1920}},
    {"command.right", 124, {960, 0, 960, 1080}, {540, 0, 540, 1920}},
    {"command.top", 126, {0, 0, 1920, 540}, {0, 0, 1080, 960}},
    {"command.bottom", 125, {0, 540, 1920, 540}, {0, 960, 1080, 960}},
    {"command.topLeft", 32, {0, 0, 960, 540}, {0, 0, 540, 960}},
    {"command.topRight", 34, {960, 0, 960, 540}, {540, 0, 540, 960}},
    {"command.bottomLeft", 38, {0, 540, 960, 540}, {0, 960, 540, 960}},
    {"command.bottomRight", 40, {960, 540, 960, 540}, {540, 960, 540, 960}},
    {"command.leftThird", 2, {0, 0, 640, 1080}, {0, 0, 1080, 640}},
    {"command.centerThird", 3, {640, 0, 640, 1080}, {0, 640, 1080, 640}},
    {"command.rightThird", 5, {1280, 0, 640, 1080}, {0, 1280, 1080, 640}},
    {"command.leftTwoThirds", 14, {0, 0, 1280, 1080}, {0, 0, 1080, 1280}},
    {"command.centerTwoThirds", 15, {320, 0, 1280, 1080}, {0, 320, 1080, 1280}},
    {"command.rightTwoThirds", 17, {640, 0, 1280, 1080}, {0, 640, 1080, 1280}},
    {"command.maximize", 36, {0, 0, 1920, 1080}, {0, 0, 1080, 1920}},
};

class SnapTargets : public testing::TestWithParam<Row> {
protected:
    SnapTargets() { desk.plugPortrait(); }

    DesktopWithConductor desk;
};

TEST_P(SnapTargets, theShortcutPlacesAWindowOnALandscapeScreen) {
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    EXPECT_EQ(desk.press({GetParam().keyCode, controlOption}), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.frame(window), GetParam().landscape.offsetBy(0, 24));
}

TEST_P(SnapTargets, theSameShortcutPlacesAWindowOnAPortraitScreen) {
    const WindowID window = desk.open(desk.editor, Rect{2000, 300, 640, 480});
    EXPECT_EQ(desk.press({GetParam().keyCode, controlOption}), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.frame(window), GetParam().portrait.offsetBy(1920, 0));
}

TEST_P(SnapTargets, thePortraitCommandIsTakenByItsTwinOnALandscapeScreen) {
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.run(GetParam().nameKey, Axis::vertical);
    EXPECT_EQ(desk.frame(window), GetParam().landscape.offsetBy(0, 24));
}

TEST_P(SnapTargets, thePortraitCommandPlacesAWindowOnAPortraitScreen) {
    const WindowID window = desk.open(desk.editor, Rect{2000, 300, 640, 480});
    desk.run(GetParam().nameKey, Axis::vertical);
    EXPECT_EQ(desk.frame(window), GetParam().portrait.offsetBy(1920, 0));
}

TEST_P(SnapTargets, theTargetIsTheWindowsHome) {
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.run(GetParam().nameKey);
    EXPECT_EQ(desk.home(window), GetParam().landscape.offsetBy(0, 24));
    EXPECT_EQ(desk.remembered(window), (Rect{300, 300, 640, 480}));
}

INSTANTIATE_TEST_SUITE_P(BuiltIn, SnapTargets, testing::ValuesIn(rows), [](const auto& row) {
    return std::string(row.param.nameKey).substr(std::string("command.").size());
});

TEST(SnapTargetsAlone, theTableAndTheFourOthersAreAllBuiltInCommands) {
    const DesktopWithConductor desk;
    EXPECT_EQ(desk.conductor->store().commands.size(), 2 * std::size(rows) + 4);
}

TEST(SnapTargetsAlone, centerKeepsTheSizeOnEitherScreen) {
    DesktopWithConductor desk;
    desk.plugPortrait();
    const WindowID landscape = desk.open(desk.editor, Rect{300, 300, 641, 480});
    desk.press({8, controlOption});
    EXPECT_EQ(desk.frame(landscape), (Rect{960 - 320.5, 24 + 540 - 240, 641, 480}));
    const WindowID portrait = desk.open(desk.editor, Rect{2000, 300, 640, 480});
    desk.press({8, controlOption});
    EXPECT_EQ(desk.frame(portrait), (Rect{1920 + 540 - 320, 960 - 240, 640, 480}));
    EXPECT_EQ(desk.home(portrait), desk.frame(portrait));
}

TEST(SnapTargetsAlone, centerOfAWindowLargerThanTheScreenOverhangsEquallyOnBothSides) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, Rect{-200, -100, 2400, 1400});
    desk.press({8, controlOption});
    const Rect centered = *desk.frame(window);
    EXPECT_EQ(centered, (Rect{960 - 1200, 24 + 540 - 700, 2400, 1400}));
    EXPECT_EQ(0 - centered.minX(), centered.maxX() - 1920);
    EXPECT_EQ(24 - centered.minY(), centered.maxY() - 1104);
}

TEST(SnapTargetsAlone, theNextAndPreviousDisplayWrapRound) {
    DesktopWithConductor desk;
    desk.plugPortrait();
    desk.plug("far", {-960, 0, 960, 540});
    const Rect first{480, 24 + 270, 960, 540};
    const Rect second{1920 + 270, 480, 540, 960};
    const Rect third{-960 + 240, 135, 480, 270};
    const WindowID window = desk.open(desk.editor, first);
    for (const Rect& expected : {second, third, first}) {
        desk.press({124, controlOptionCommand});
        EXPECT_EQ(desk.frame(window), expected);
        EXPECT_EQ(desk.home(window), expected);
    }
    for (const Rect& expected : {third, second, first}) {
        desk.press({123, controlOptionCommand});
        EXPECT_EQ(desk.frame(window), expected);
    }
}

TEST(SnapTargetsAlone, withOneScreenTheNextDisplayIsTheSame) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.press({124, controlOptionCommand});
    EXPECT_EQ(desk.frame(window), (Rect{300, 300, 640, 480}));
    EXPECT_EQ(desk.remembered(window), (Rect{300, 300, 640, 480}));
}

TEST(SnapTargetsAlone, aWindowCentredOnAPanelCountsAsOnTheFirstScreenForTheNextOne) {
    DesktopWithConductor desk;
    desk.plugPortrait();
    // Centre (2460, 1930): on the portrait screen's panel, in no visible frame.
    const WindowID window = desk.open(desk.editor, Rect{2190, 1840, 540, 180});
    desk.press({124, controlOptionCommand});
    // As though it lay on the first visible frame, (0, 24, 1920, 1080).
    const double relativeX = 2190.0 / 1920;
    const double relativeY = (1840.0 - 24) / 1080;
    EXPECT_EQ(desk.frame(window), (Rect{1920 + relativeX * 1080, relativeY * 1920,
                                        540.0 / 1920 * 1080, 180.0 / 1080 * 1920}));
}

TEST(SnapTargetsAlone, aWindowCentredOnAPanelSnapsOnThatPanelsScreen) {
    DesktopWithConductor desk;
    desk.plugPortrait();
    const WindowID window = desk.open(desk.editor, Rect{2190, 1840, 540, 180});
    desk.run("command.maximize");
    EXPECT_EQ(desk.frame(window), (Rect{1920, 0, 1080, 1920}));
}

TEST(SnapTargetsAlone, aSquareScreenCountsAsLandscapeAndALittleLessAsPortrait) {
    DesktopWithConductor desk;
    desk.plug("main", {0, 0, 1080, 1104});
    const WindowID window = desk.open(desk.editor, Rect{100, 100, 200, 200});
    desk.run("command.leftThird");
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 360, 1080}));
    // It is the visible frame that counts: a panel at the side makes it narrower than high.
    desk.screens.addPanel("main", ScreenEdge::left, 120);
    desk.run("command.leftThird");
    EXPECT_EQ(desk.frame(window), (Rect{120, 24, 960, 360}));
}

TEST(SnapTargetsAlone, aCommandWithoutAPortraitTwinIsUsedUnchangedOnAPortraitScreen) {
    DesktopWithConductor desk;
    desk.plugPortrait();
    const WindowID window = desk.open(desk.editor, Rect{2000, 300, 640, 480});
    // Six of 24 columns and three of 12 rows, from the fourth column and second row on.
    desk.conductor->performCommand(SnapCommand::custom("Mine", 3, 1, 6, 3));
    EXPECT_EQ(desk.frame(window), (Rect{1920 + 3 * 45.0, 160, 6 * 45.0, 480}));
}

TEST(SnapTargetsAlone, anAreaOfSeveralBlocksIsTheRectangleAroundThem) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    SnapCommand corners = SnapCommand::custom("Corners", 0, 0, 6, 6);
    corners.targetSegments.push_back({18, 6, 6, 6});
    desk.conductor->performCommand(corners);
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 1920, 1080}));
}

TEST(SnapTargetsAlone, thirdsOfAnUnevenWidthMeetOnTheScreen) {
    DesktopWithConductor desk;
    desk.plug("main", {0, 0, 1366, 768});
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    double edge = 0;
    for (const auto* nameKey : {"command.leftThird", "command.centerThird", "command.rightThird"}) {
        desk.run(nameKey);
        EXPECT_EQ(desk.seen(window)->minX(), edge) << nameKey;
        edge = desk.seen(window)->maxX();
    }
    EXPECT_EQ(edge, 1366);
}

TEST(SnapTargetsAlone, aScreenAboveAndLeftOfThePrimaryHasNegativeCoordinates) {
    DesktopWithConductor desk;
    desk.plug("above", {-500, -1200, 1600, 1200});
    const WindowID window = desk.open(desk.editor, Rect{-300, -900, 640, 480});
    desk.run("command.bottomRight");
    EXPECT_EQ(desk.frame(window), (Rect{300, -600, 800, 600}));
}

TEST(SnapTargetsAlone, screensCountAsTheyAreAtThePress) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.run("command.maximize");
    desk.screens.addPanel("main", ScreenEdge::bottom, 40);
    desk.run("command.maximize");
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 1920, 1040}));
    desk.plugPortrait();
    desk.press({124, controlOptionCommand});
    EXPECT_EQ(desk.frame(window), (Rect{1920, 0, 1080, 1920}));
    desk.unplug("tall");
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 1080, 1920}));
    // The window manager's doing; its centre, at y = 984, is still on the screen.
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 960, 1040}));
}

TEST(SnapTargetsAlone, aWindowOnTheScreenThatBecomesPrimaryIsStillFound) {
    DesktopWithConductor desk;
    desk.plugPortrait();
    const WindowID window = desk.open(desk.editor, Rect{2000, 300, 640, 480});
    desk.screens.makePrimary("tall");
    desk.run("command.top");
    EXPECT_EQ(desk.frame(window), (Rect{0, 0, 1080, 960}));
    EXPECT_EQ(desk.screens.toArrangement(*desk.frame(window)), (Rect{1920, 0, 1080, 960}));
}

}  // namespace
}  // namespace lumatile
