#include "Lumatile/PanelProtection.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <ostream>
#include <string_view>
#include <vector>

#include "oled_protection/OLEDSettingsCodec.h"
#include "tests/unit/Lumatile/DesktopWithConductor.h"

namespace lumatile {
namespace {

const Rect opened{300, 200, 640, 480};

/// A step every five seconds and nothing else, so that every pixel is foretold.
constexpr std::string_view shiftOnly =
    R"({"orbitAmplitude":1,"orbitStepInterval":5,"orbitWaitForPause":false,)"
    R"("jitterEnabled":false,"idleDimEnabled":false})";

constexpr std::string_view dimOnly = R"({"orbitEnabled":false,"jitterEnabled":false})";

/// The ring of radius 1 from its second point on, which is the first one taken.
const std::vector<Offset> ring{{0, -1}, {1, -1}, {1, 0},  {1, 1},
                               {0, 1},  {-1, 1}, {-1, 0}, {-1, -1}};

struct DesktopUnderProtection : DesktopWithConductor {
    explicit DesktopUnderProtection(std::string_view settings = shiftOnly)
        : DesktopWithConductor(settings) {}

    const PanelProtection& protection() const { return conductor->protection(); }

    /// How far the window is from where it was opened.
    Offset shift(WindowID id, const Rect& from = opened) const {
        const Rect frame = this->frame(id).value_or(Rect{});
        EXPECT_EQ(frame.size(), from.size());
        return {frame.x - from.x, frame.y - from.y};
    }
};

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

// --- Settings ---

TEST(PanelProtection, settingsThatChangeNothingDoNothing) {
    DesktopUnderProtection desk;
    desk.advance(3);
    const auto pacer = desk.protection().orbitPacer();
    desk.conductor->changeOLEDSettings(desk.conductor->oledSettings());
    desk.conductor->setExaggerated(false);
    EXPECT_EQ(desk.protection().orbitPacer(), pacer);
    EXPECT_EQ(desk.preferences.changes(), 0U);
}

TEST(PanelProtection, settingsThatAreInForceAlreadyDoNotStartTheCountdownAnew) {
    DesktopUnderProtection desk;
    desk.advance(3);
    const auto pacer = desk.protection().orbitPacer();
    desk.conductor->applyOLEDSettings();
    EXPECT_EQ(desk.protection().orbitPacer(), pacer)
        << "as after a change of the commands elsewhere";
}

TEST(PanelProtection, changedSettingsAreStoredAndStartTheCountdownAnew) {
    DesktopUnderProtection desk;
    const WindowID window = desk.open(desk.editor, opened);
    desk.advance(4);
    OLEDSettings settings = desk.conductor->oledSettings();
    settings.orbitAmplitude = 2;
    desk.conductor->changeOLEDSettings(settings);
    EXPECT_EQ(desk.conductor->oledSettings(), settings);
    const auto stored = desk.preferences.bytes(OLEDSettings::preferenceKey);
    ASSERT_TRUE(stored);
    EXPECT_EQ(OLEDSettingsCodec::decode(*stored), settings);
    EXPECT_EQ(desk.protection().orbitPacer(), OrbitPacer(5, false, 3, desk.runLoop.now()));
    desk.advance(4.5);
    EXPECT_EQ(desk.frame(window), opened);
    desk.advance(1);
    EXPECT_EQ(desk.shift(window), (Offset{-1, -2}));
}

/// What the settings mean to the dimmer.
struct DimmerRow {
    const char* settings = nullptr;
    bool exaggerated = false;
    IdleDimmer::Config config;

    friend std::ostream& operator<<(std::ostream& stream, const DimmerRow& row) {
        return stream << row.settings << (row.exaggerated ? " exaggerated" : "");
    }
};

const DimmerRow dimmerRows[] = {
    {"{}", false, {300, 0.3, 5, true}},
    {"{}", true, {15, 0.3, 2, true}},
    {R"({"idleThreshold":60,"idleDimStrength":0.75})", false, {60, 0.75, 5, true}},
    {R"({"idleThreshold":60,"idleDimStrength":0.75})", true, {15, 0.75, 2, true}},
    {R"({"idleThreshold":-10,"idleDimStrength":5})", false, {2.4, 1, 5, true}},
    {R"({"idleThreshold":1.5,"idleDimStrength":-1})", false, {2.4, 0, 5, true}},
    {R"({"idleDimEnabled":false})", false, {300, 0.3, 5, false}},
    {R"({"idleDimEnabled":false})", true, {15, 0.3, 2, false}},
};

class DimmerSettings : public testing::TestWithParam<DimmerRow> {};

TEST_P(DimmerSettings, reachTheDimmerCellByCell) {
    const DimmerRow& row = GetParam();
    const DesktopUnderProtection desk(row.settings);
    desk.conductor->setExaggerated(row.exaggerated);
    ASSERT_TRUE(desk.protection().dimmer());
    EXPECT_EQ(desk.protection().dimmer()->config, row.config);
}

INSTANTIATE_TEST_SUITE_P(Rows, DimmerSettings, testing::ValuesIn(dimmerRows));

TEST(PanelProtection, thereIsNoDimmerBeforeTheFirstStart) {
    SimulatedDesktop desk;
    desk.plug("main", {0, 0, 1920, 1080});
    const auto conductor = std::make_shared<ApplicationConductor>(desk.platform());
    EXPECT_FALSE(conductor->protection().dimmer());
    EXPECT_EQ(desk.dimOverlays.rebuilds(), 0U);
    conductor->setExaggerated(true);
    conductor->setAccessibilityGranted();
    conductor->startFeatures();
    ASSERT_TRUE(conductor->protection().dimmer());
    EXPECT_EQ(conductor->protection().dimmer()->config, (IdleDimmer::Config{15, 0.3, 2, true}));
}

TEST(PanelProtection, theStatusLinesTellWhatIsInForce) {
    DesktopUnderProtection desk(R"({"orbitStepInterval":60,"orbitWaitForPause":false,)"
                                R"("jitterEnabled":false,"idleDimStrength":0.35})");
    using Lines = std::array<std::string, 3>;
    EXPECT_EQ(desk.conductor->oledStatusLines(),
              (Lines{"Pixel shift: on — starts at the next step", "Edge jitter: off",
                     "Idle dim: 35% after 5 min idle"}));
    desk.open(desk.editor, opened);
    desk.advance(60.5);
    desk.advance(20);
    EXPECT_EQ(desk.conductor->oledStatusLines()[0], "Pixel shift: 20s ago (−1, −2) · 1 window");
    desk.conductor->setExaggerated(true);
    const Lines exaggerated = desk.conductor->oledStatusLines();
    EXPECT_EQ(exaggerated[0], "Pixel shift: 20s ago (−1, −2) · 1 window · DEBUG");
    EXPECT_EQ(exaggerated[2], "Idle dim: 35% after 15s idle");

    DesktopUnderProtection shifted("{}");
    const Offset offset = JitterPolicy{3, 3600}.offset(shifted.runLoop.now());
    ASSERT_EQ(offset, (Offset{-3, 2})) << "of the hour in which every desktop starts";
    EXPECT_EQ(shifted.conductor->oledStatusLines()[1],
              "Edge jitter: inner edges shifted (−3, +2) this hour");
}

TEST(PanelProtection, theStatusLineTellsTheDimmingThatIsInForceNotTheOneThatIsStored) {
    const DesktopUnderProtection desk(R"({"idleThreshold":-10,"idleDimStrength":5})");
    EXPECT_EQ(desk.conductor->oledStatusLines()[2], "Idle dim: 100% after 2s idle");
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

// --- Dimming ---

TEST(PanelProtection, theScreensDarkenAfterTheThresholdAndClearOnInput) {
    DesktopUnderProtection desk(dimOnly);
    desk.advance(300);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0);
    desk.advance(2.5);
    const double first = desk.dimOverlays.opacity();
    EXPECT_GT(first, 0);
    EXPECT_LT(first, 0.3);
    desk.advance(5);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0.3);
    desk.advance(3600);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0.3);
    desk.input.touch();
    desk.advance(2.4);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0);
    EXPECT_TRUE(desk.log.lines().empty());
}

TEST(PanelProtection, anInputJustBeforeATickClearsTheScreensUntilTheFadeHasEnded) {
    DesktopUnderProtection desk(
        R"({"orbitEnabled":false,"jitterEnabled":false,"idleThreshold":-10,"idleDimStrength":1})");
    desk.advance(15.7);
    ASSERT_GT(desk.dimOverlays.opacity(), 0);
    desk.input.touch();
    desk.advance(2.4);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0);
}

RC_GTEST_PROP(PanelProtection, whateverIsStoredAnInputClearsTheScreens, ()) {
    const auto number = rc::gen::oneOf(
        rc::gen::map(rc::gen::inRange(-100'000, 100'000), [](int whole) { return whole / 100.0; }),
        rc::gen::element(-1e300, -1e-300, 0.0, 1e-300, 1e9, 1e300));
    OLEDSettings settings;
    settings.orbitEnabled = false;
    settings.jitterEnabled = false;
    settings.idleThreshold = *number;
    settings.idleDimStrength = *number;
    DesktopUnderProtection desk(OLEDSettingsCodec::encode(settings));
    desk.advance(*rc::gen::inRange(0, 400));
    desk.conductor->setExaggerated(*rc::gen::arbitrary<bool>());
    desk.advance(*rc::gen::inRange(0, 400) / 10.0);
    desk.input.touch();
    desk.advance(2.4);
    RC_ASSERT(desk.dimOverlays.opacity() == 0);
}

TEST(PanelProtection, aHeldButtonGoesOnCountingAsIdle) {
    DesktopUnderProtection desk(dimOnly);
    desk.input.pressButton();
    desk.advance(310);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0.3);
}

TEST(PanelProtection, theOverlaysAreBuiltOnceARun) {
    DesktopUnderProtection desk(dimOnly);
    EXPECT_EQ(desk.dimOverlays.rebuilds(), 1U);
    desk.plugPortrait();
    desk.conductor->stopFeatures();
    desk.conductor->startFeatures();
    desk.advance(400);
    EXPECT_EQ(desk.dimOverlays.rebuilds(), 1U);
    EXPECT_EQ(desk.dimOverlays.frames().size(), 1U);
}

TEST(PanelProtection, stopClearsTheScreens) {
    DesktopUnderProtection desk(dimOnly);
    desk.advance(400);
    desk.conductor->stopFeatures();
    desk.advance(0.5);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0);
    desk.advance(600);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0);
    // And at once where there is no time to fade any more.
    DesktopUnderProtection ending(dimOnly);
    ending.advance(400);
    ending.conductor->shutdown();
    ending.conductor.reset();
    EXPECT_EQ(ending.dimOverlays.opacity(), 0);
}

TEST(PanelProtection, dimmingThatIsSwitchedOffClearsAtTheNextTick) {
    DesktopUnderProtection desk(dimOnly);
    desk.advance(400);
    OLEDSettings settings = desk.conductor->oledSettings();
    settings.idleDimEnabled = false;
    desk.conductor->changeOLEDSettings(settings);
    desk.advance(2.5);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0);
}

TEST(PanelProtection, dimmingStaysOffWhereNobodyTellsTheIdleTime) {
    DesktopUnderProtection desk(dimOnly);
    desk.input.setTelling(false);
    desk.advance(4000);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0);
    EXPECT_TRUE(desk.dimOverlays.history().empty());
}

TEST(PanelProtection, aJumpOfTheClockDarkensNothing) {
    DesktopUnderProtection desk(dimOnly);
    desk.advance(10);
    desk.clock.jump(86400);
    desk.advance(10);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0);
    desk.clock.jump(-86400);
    desk.advance(400);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0.3);
    desk.input.touch();
    desk.advance(2.5);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0) << "nor leaves them dark";
}

}  // namespace
}  // namespace lumatile
