#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>

#include "oled_protection/OLEDSettingsCodec.h"
#include "tests/unit/Lumatile/DesktopUnderProtection.h"

namespace lumatile {
namespace {

TEST(PanelSettings, settingsThatChangeNothingDoNothing) {
    DesktopUnderProtection desk;
    desk.advance(3);
    const auto pacer = desk.protection().orbitPacer();
    desk.conductor->changeOLEDSettings(desk.conductor->oledSettings());
    desk.conductor->setExaggerated(false);
    EXPECT_EQ(desk.protection().orbitPacer(), pacer);
    EXPECT_EQ(desk.preferences.changes(), 0U);
}

TEST(PanelSettings, settingsThatAreInForceAlreadyDoNotStartTheCountdownAnew) {
    DesktopUnderProtection desk;
    desk.advance(3);
    const auto pacer = desk.protection().orbitPacer();
    desk.conductor->applyOLEDSettings();
    EXPECT_EQ(desk.protection().orbitPacer(), pacer)
        << "as after a change of the commands elsewhere";
}

TEST(PanelSettings, changedSettingsAreStoredAndStartTheCountdownAnew) {
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

TEST(PanelSettings, thereIsNoDimmerBeforeTheFirstStart) {
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

TEST(PanelSettings, theStatusLinesTellWhatIsInForce) {
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

TEST(PanelSettings, theStatusLineTellsTheDimmingThatIsInForceNotTheOneThatIsStored) {
    const DesktopUnderProtection desk(R"({"idleThreshold":-10,"idleDimStrength":5})");
    EXPECT_EQ(desk.conductor->oledStatusLines()[2], "Idle dim: 100% after 2s idle");
}

}  // namespace
}  // namespace lumatile
