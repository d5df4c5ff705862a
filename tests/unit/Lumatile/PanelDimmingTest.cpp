#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "oled_protection/OLEDSettingsCodec.h"
#include "tests/unit/Lumatile/DesktopUnderProtection.h"

namespace lumatile {
namespace {

TEST(PanelDimming, theScreensDarkenAfterTheThresholdAndClearOnInput) {
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

TEST(PanelDimming, anInputJustBeforeATickClearsTheScreensUntilTheFadeHasEnded) {
    DesktopUnderProtection desk(
        R"({"orbitEnabled":false,"jitterEnabled":false,"idleThreshold":-10,"idleDimStrength":1})");
    desk.advance(15.7);
    ASSERT_GT(desk.dimOverlays.opacity(), 0);
    desk.input.touch();
    desk.advance(2.4);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0);
}

RC_GTEST_PROP(PanelDimming, whateverIsStoredAnInputClearsTheScreens, ()) {
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

TEST(PanelDimming, aHeldButtonGoesOnCountingAsIdle) {
    DesktopUnderProtection desk(dimOnly);
    desk.input.pressButton();
    desk.advance(310);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0.3);
}

TEST(PanelDimming, theOverlaysAreBuiltOnceARun) {
    DesktopUnderProtection desk(dimOnly);
    EXPECT_EQ(desk.dimOverlays.rebuilds(), 1U);
    desk.plugPortrait();
    desk.conductor->stopFeatures();
    desk.conductor->startFeatures();
    desk.advance(400);
    EXPECT_EQ(desk.dimOverlays.rebuilds(), 1U);
    EXPECT_EQ(desk.dimOverlays.frames().size(), 1U);
}

TEST(PanelDimming, stopClearsTheScreens) {
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

TEST(PanelDimming, dimmingThatIsSwitchedOffClearsAtTheNextTick) {
    DesktopUnderProtection desk(dimOnly);
    desk.advance(400);
    OLEDSettings settings = desk.conductor->oledSettings();
    settings.idleDimEnabled = false;
    desk.conductor->changeOLEDSettings(settings);
    desk.advance(2.5);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0);
}

TEST(PanelDimming, dimmingStaysOffWhereNobodyTellsTheIdleTime) {
    DesktopUnderProtection desk(dimOnly);
    desk.input.setTelling(false);
    desk.advance(4000);
    EXPECT_EQ(desk.dimOverlays.opacity(), 0);
    EXPECT_TRUE(desk.dimOverlays.history().empty());
}

TEST(PanelDimming, theSessionKnowsWhenScreensWillBeDarkened) {
    DesktopUnderProtection desk(
        R"({"orbitEnabled":false,"jitterEnabled":false,"idleThreshold":120})");
    EXPECT_EQ(desk.input.dimsAfter(), 120);
    desk.conductor->setExaggerated(true);
    EXPECT_EQ(desk.input.dimsAfter(), 15);
    desk.conductor->setExaggerated(false);
    OLEDSettings settings = desk.conductor->oledSettings();
    settings.idleDimEnabled = false;
    desk.conductor->changeOLEDSettings(settings);
    EXPECT_EQ(desk.input.dimsAfter(), std::nullopt);
    settings.idleDimEnabled = true;
    desk.conductor->changeOLEDSettings(settings);
    EXPECT_EQ(desk.input.dimsAfter(), 120);
    desk.conductor->stopFeatures();
    EXPECT_EQ(desk.input.dimsAfter(), std::nullopt);
}

TEST(PanelDimming, aJumpOfTheClockDarkensNothing) {
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
