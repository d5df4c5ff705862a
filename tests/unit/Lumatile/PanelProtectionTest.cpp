#include "Lumatile/PanelProtection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "tests/unit/Lumatile/DesktopUnderProtection.h"

namespace lumatile {
namespace {

// --- The steps ---

TEST(PanelProtection, windowsOfAllProgramsWalkTheRingTogether) {
    DesktopUnderProtection desk;
    const WindowID first = desk.open(desk.editor, opened);
    const Rect other{900, 500, 400, 300};
    const WindowID second = desk.open(desk.launch({.pid = 101}), other);
    desk.advance(4.9);
    EXPECT_EQ(desk.frame(first), opened) << "the first step comes after a whole interval";
    for (int round = 0; round < 2; ++round) {
        for (const Offset& offset : ring) {
            desk.advance(5);
            EXPECT_EQ(desk.shift(first), offset);
            EXPECT_EQ(desk.shift(second, other), offset);
        }
    }
}

TEST(PanelProtection, aStepCostsAWindowOneWriteAndTwoReadsOfItsFrame) {
    DesktopUnderProtection desk;
    desk.open(desk.editor, opened);
    desk.advance(5.5);  // The first step meets the window as well.
    desk.traffic.clear();
    desk.advance(5);
    const auto asked = [&](std::string_view access) {
        const std::vector<std::string> texts = desk.traffic.texts();
        return std::count(texts.begin(), texts.end(), access);
    };
    EXPECT_EQ(asked("read AXPosition"), 2);
    EXPECT_EQ(asked("read AXSize"), 2);
    EXPECT_EQ(asked("write AXPosition"), 1);
    EXPECT_EQ(desk.traffic.count(AccessKind::write), 1U);
}

TEST(PanelProtection, betweenTheStepsNothingIsAsked) {
    DesktopUnderProtection desk(
        R"({"orbitWaitForPause":true,"orbitStepInterval":300,"idleDimEnabled":false})");
    desk.open(desk.editor, opened);
    desk.advance(299);
    EXPECT_TRUE(desk.traffic.record().empty());
}

TEST(PanelProtection, aStepWaitsForThePause) {
    DesktopUnderProtection desk(
        R"({"orbitAmplitude":1,"orbitStepInterval":5,"jitterEnabled":false})");
    const WindowID window = desk.open(desk.editor, opened);
    for (int key = 0; key < 60; ++key) {
        desk.advance(1.5);
        desk.input.touch();
        ASSERT_EQ(desk.frame(window), opened);
    }
    desk.advance(2.9);
    EXPECT_EQ(desk.frame(window), opened);
    desk.advance(1.1);
    EXPECT_EQ(desk.shift(window), ring[0]);
}

TEST(PanelProtection, aStepWaitsForTheButton) {
    DesktopUnderProtection desk;
    const WindowID window = desk.open(desk.editor, opened);
    desk.input.pressButton();
    desk.advance(600);
    EXPECT_EQ(desk.frame(window), opened);
    desk.input.releaseButton();
    desk.advance(1);
    EXPECT_EQ(desk.shift(window), ring[0])
        << "and comes at the next look, also while somebody types";
    desk.advance(4);
    EXPECT_EQ(desk.shift(window), ring[0]) << "one step, not all that were held back";
}

TEST(PanelProtection, theDemonstrationIsLargeAndQuickAndWaitsForNobody) {
    DesktopUnderProtection desk("{\"jitterEnabled\":false}");
    const WindowID window = desk.open(desk.editor, opened);
    desk.conductor->setExaggerated(true);
    EXPECT_EQ(desk.protection().orbitPacer(), OrbitPacer(1, false, 3, desk.runLoop.now()));
    desk.advance(0.5);
    desk.input.touch();
    desk.advance(0.6);
    EXPECT_EQ(desk.shift(window), (Offset{-15, -20}));
    desk.conductor->setExaggerated(false);
    EXPECT_EQ(desk.protection().orbitPacer(), OrbitPacer(300, true, 3, desk.runLoop.now()));
}

TEST(PanelProtection, anIdleTimeThatNobodyTellsIsAPause) {
    DesktopUnderProtection desk(
        R"({"orbitAmplitude":1,"orbitStepInterval":5,"jitterEnabled":false})");
    desk.input.setTelling(false);
    const WindowID window = desk.open(desk.editor, opened);
    desk.advance(5.1);
    EXPECT_EQ(desk.shift(window), ring[0]);
}

// --- The windows ---

TEST(PanelProtection, onlyOrdinaryWindowsOfOtherProgramsMove) {
    DesktopUnderProtection desk;
    desk.workspace.setOwnPid(7);
    const auto launch = [&](SimulatedApplicationTraits traits) {
        return desk.open(desk.launch(std::move(traits)), opened);
    };
    const WindowID ordinary = launch({.pid = 101});
    const WindowID ourOwn = launch({.pid = 7});
    const WindowID tool = launch({.pid = 102, .isRegular = false});
    const WindowID blacklisted = launch({.pid = 103, .applicationId = "never"});
    desk.conductor->blacklist().addToUserList("never");
    const WindowID stranger = launch({.pid = std::nullopt});
    const WindowID minimized = desk.open(desk.editor, opened);
    desk.programs.minimize(minimized);
    SimulatedWindowTraits whole;
    whole.frame = opened;
    whole.isFullScreen = true;
    const WindowID fullScreen = desk.open(desk.editor, whole);
    desk.advance(60);
    EXPECT_EQ(desk.shift(ordinary), ring[3]) << "twelve steps";
    for (const WindowID id : {ourOwn, tool, blacklisted, stranger, minimized, fullScreen}) {
        EXPECT_EQ(desk.frame(id), opened) << static_cast<std::uint64_t>(id);
    }
    EXPECT_EQ(desk.conductor->orbit().trackedCount(), 1U);
}

TEST(PanelProtection, hiddenProgramsAreLeftAloneAndForgotten) {
    DesktopUnderProtection desk;
    const ApplicationID browser = desk.launch({.pid = 101});
    const WindowID window = desk.open(browser, opened);
    desk.open(desk.editor, opened);
    desk.advance(5.1);
    EXPECT_EQ(desk.conductor->orbit().trackedCount(), 2U);
    desk.programs.setHidden(browser, true);
    desk.advance(5);
    EXPECT_EQ(desk.shift(window), ring[0]);
    EXPECT_EQ(desk.conductor->orbit().trackedCount(), 1U);
}

TEST(PanelProtection, aWindowThatTheUserMovedIsAtHomeThere) {
    DesktopUnderProtection desk;
    const WindowID window = desk.open(desk.editor, opened);
    desk.advance(5.1);
    const Rect moved{700, 300, 500, 400};
    desk.dragTo(window, moved);
    desk.advance(5);
    EXPECT_EQ(desk.frame(window), moved) << "not moved on the step that notices";
    desk.advance(5);
    EXPECT_EQ(desk.shift(window, moved), ring[2]);
}

TEST(PanelProtection, aSnappedWindowWalksRoundItsArea) {
    DesktopUnderProtection desk;
    const WindowID window = desk.open(desk.editor, opened);
    desk.advance(5.1);
    desk.run("command.left");
    const Rect left{0, 24, 960, 1080};
    EXPECT_EQ(desk.frame(window), left);
    desk.advance(5);
    EXPECT_EQ(desk.shift(window, left), ring[1]);
}

TEST(PanelProtection, theSeamOfTwoHalvesMovesWithTheHour) {
    DesktopUnderProtection desk(
        R"({"orbitEnabled":false,"orbitStepInterval":5,"orbitWaitForPause":false,)"
        R"("jitterTolerance":6,"idleDimEnabled":false})");
    const WindowID right = desk.open(desk.editor, opened);
    desk.run("command.right");
    const WindowID left = desk.open(desk.editor, opened);
    desk.run("command.left");
    const auto seam = [&] {
        EXPECT_EQ(desk.frame(left)->maxX(), desk.frame(right)->minX());
        EXPECT_EQ(desk.frame(left)->minX(), 0);
        EXPECT_EQ(desk.frame(right)->maxX(), 1920);
        return desk.frame(left)->maxX();
    };
    std::vector<double> seams;
    for (int hour = 0; hour < 12; ++hour) {
        const double now = desk.runLoop.now();
        EXPECT_EQ(seam(), 960 + (JitterPolicy{6, 3600}.offset(now).dx));
        seams.push_back(seam());
        desk.advance(3600);
    }
    std::sort(seams.begin(), seams.end());
    EXPECT_GE(std::unique(seams.begin(), seams.end()) - seams.begin(), 5)
        << "an hour's seam is seldom another's";
}

TEST(PanelProtection, theWritesOfAStepAndOfTheWayHomeMayGoTogether) {
    DesktopUnderProtection desk;
    desk.open(desk.editor, opened);
    desk.advance(0.1);
    const auto isTogether = [&](const std::function<void()>& move) {
        bool isBatch = false;
        desk.traffic.before(AccessKind::write, "AXPosition", 1,
                            [&] { isBatch = desk.accessibility.isBatching(); });
        move();
        EXPECT_EQ(desk.traffic.openOrders(), 0U) << "nothing was written";
        return isBatch;
    };
    const auto step = [&] { desk.advance(5); };
    EXPECT_TRUE(isTogether(step));
    EXPECT_FALSE(desk.accessibility.isBatching());
    EXPECT_TRUE(isTogether([&] {
        OLEDSettings settings = desk.conductor->oledSettings();
        settings.orbitEnabled = false;
        desk.conductor->changeOLEDSettings(settings);
        settings.orbitEnabled = true;
        desk.conductor->changeOLEDSettings(settings);
    }));
    EXPECT_TRUE(isTogether(step));
    EXPECT_TRUE(isTogether([&] { desk.conductor->stopFeatures(); }));
    EXPECT_FALSE(desk.accessibility.isBatching());
}

// --- Start and stop ---

TEST(PanelProtection, stopBringsWindowsHomeAndStartWalksAnew) {
    DesktopUnderProtection desk;
    const WindowID window = desk.open(desk.editor, opened);
    const WindowID moved = desk.open(desk.editor, opened);
    desk.advance(15.1);
    const Rect there{700, 300, 500, 400};
    desk.dragTo(moved, there);
    desk.conductor->stopFeatures();
    EXPECT_EQ(desk.frame(window), opened);
    EXPECT_EQ(desk.frame(moved), there) << "the user's own last word";
    EXPECT_FALSE(desk.protection().oledRunning());
    EXPECT_FALSE(desk.protection().orbitPacer());
    desk.advance(60);
    EXPECT_EQ(desk.frame(window), opened);
    EXPECT_EQ(desk.runLoop.timerCount(), 0U);
    desk.conductor->startFeatures();
    EXPECT_TRUE(desk.protection().oledRunning());
    desk.advance(5.1);
    EXPECT_EQ(desk.shift(window), ring[0]);
}

TEST(PanelProtection, timersRunOnlyForWhatIsSwitchedOn) {
    DesktopUnderProtection shifting;
    EXPECT_EQ(shifting.runLoop.timerCount(), 2U);
    DesktopUnderProtection jittering(R"({"orbitEnabled":false})");
    EXPECT_EQ(jittering.runLoop.timerCount(), 2U);
    DesktopUnderProtection dimming(dimOnly);
    EXPECT_EQ(dimming.runLoop.timerCount(), 1U) << "no window is ever moved";
    EXPECT_FALSE(dimming.protection().orbitPacer());
    dimming.conductor->changeOLEDSettings(OLEDSettings::recommended);
    EXPECT_EQ(dimming.runLoop.timerCount(), 2U);
}

TEST(PanelProtection, switchingBothShiftsOffBringsWindowsHomeAtOnce) {
    DesktopUnderProtection desk;
    const WindowID window = desk.open(desk.editor, opened);
    desk.advance(5.1);
    OLEDSettings settings = desk.conductor->oledSettings();
    settings.orbitEnabled = false;
    desk.conductor->changeOLEDSettings(settings);
    EXPECT_EQ(desk.frame(window), opened);
    EXPECT_FALSE(desk.conductor->isProtectionActive());
}

TEST(PanelProtection, theIconShowsProtectionWhileWindowsAreMoved) {
    DesktopUnderProtection desk;
    EXPECT_TRUE(desk.conductor->isProtectionActive());
    desk.conductor->stopFeatures();
    EXPECT_FALSE(desk.conductor->isProtectionActive());
    EXPECT_TRUE(
        DesktopUnderProtection(R"({"orbitEnabled":false})").conductor->isProtectionActive());
    EXPECT_FALSE(DesktopUnderProtection(dimOnly).conductor->isProtectionActive());
}

// --- The clock ---

TEST(PanelProtection, aStepEverySecondComesEverySecondAlsoWhereTicksAreEarly) {
    DesktopUnderProtection desk(
        R"({"orbitAmplitude":1,"orbitStepInterval":1,"orbitWaitForPause":false,)"
        R"("jitterEnabled":false,"idleDimEnabled":false})");
    const WindowID window = desk.open(desk.editor, opened);
    desk.advance(0.5);
    for (int second = 0; second < 100; ++second) {
        // A few milliseconds off to either side.
        const double off = (second % 7 - 3) * 0.004;
        desk.clock.jump(off);
        const Rect before = desk.frame(window).value_or(Rect{});
        desk.advance(1);
        EXPECT_NE(desk.frame(window), before) << second;
        desk.clock.jump(-off);
    }
}

TEST(PanelProtection, aClockSetBackDelaysTheNextStepByOneIntervalAtMost) {
    DesktopUnderProtection desk;
    const WindowID window = desk.open(desk.editor, opened);
    desk.advance(5.1);
    desk.clock.jump(-86400);
    desk.advance(6.1);
    EXPECT_EQ(desk.shift(window), ring[1]);
    desk.advance(5);
    EXPECT_EQ(desk.shift(window), ring[2]);
}

TEST(PanelProtection, aClockSetForwardOrASleepBringsOneStepNotABurst) {
    DesktopUnderProtection desk;
    const WindowID window = desk.open(desk.editor, opened);
    desk.advance(5.1);
    desk.clock.jump(86400);
    desk.advance(1);
    EXPECT_EQ(desk.shift(window), ring[1]);
    desk.advance(3.8);
    EXPECT_EQ(desk.shift(window), ring[1]);
    desk.advance(1.2);
    EXPECT_EQ(desk.shift(window), ring[2]);
}

}  // namespace
}  // namespace lumatile
