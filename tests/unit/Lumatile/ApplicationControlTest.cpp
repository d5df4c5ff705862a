// What other programs may ask of the running one, on a whole desktop.

#include "Lumatile/ApplicationControl.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "oled_protection/OLEDSettingsCodec.h"
#include "onboarding/OnboardingTexts.h"
#include "tests/unit/Lumatile/DesktopWithConductor.h"

namespace lumatile {
namespace {

using Protection = Controlled::Protection;

struct ControlledDesktop : DesktopWithConductor {
    explicit ControlledDesktop(std::vector<std::string> shortcomings = {})
        : control(conductor, accessibility, runLoop, std::move(shortcomings)) {}

    ApplicationControl control;

    OLEDSettings stored() {
        const auto bytes = preferences.bytes(OLEDSettings::preferenceKey);
        EXPECT_TRUE(bytes);
        return OLEDSettingsCodec::decode(bytes.value_or("")).value_or(OLEDSettings());
    }
};

TEST(ApplicationControl, listsEveryCommandInTheOrderOfTheMenus) {
    ControlledDesktop desk;
    const auto listed = desk.control.commands();
    const auto& commands = desk.conductor->store().commands;
    ASSERT_EQ(listed.size(), commands.size());
    EXPECT_EQ(listed.front(), (Controlled::Command{commands.front().id.text(), "command.left",
                                                   commands.front().displayName()}));
    EXPECT_EQ(listed.back().id, commands.back().id.text());
}

TEST(ApplicationControl, saysWhatIsMissingBeforeWindowsCanBeMoved) {
    ControlledDesktop desk;
    EXPECT_EQ(desk.control.missing(), "");
    EXPECT_EQ(desk.control.statusLines().size(), 3U);
    desk.accessibility.setTrusted(false);
    const std::string sentence(OnboardingTexts::missing(desk.accessibility.trustObstacle()));
    EXPECT_EQ(desk.control.missing(), sentence);
    ASSERT_EQ(desk.control.statusLines().size(), 4U);
    EXPECT_EQ(desk.control.statusLines().front(), sentence);
}

TEST(ApplicationControl, endsWithWhatCannotBeDoneInThisSession) {
    ControlledDesktop desk({"One.", "Two."});
    const std::vector<std::string> lines = desk.control.statusLines();
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[3], "One.");
    EXPECT_EQ(lines[4], "Two.");
}

TEST(ApplicationControl, runsACommandByItsKey) {
    ControlledDesktop desk;
    const WindowID window = desk.open(desk.editor, Rect{100, 100, 500, 400});
    EXPECT_TRUE(desk.control.run("command.left"));
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 960, 1080}));
}

TEST(ApplicationControl, runsACommandByItsIdInEitherCase) {
    ControlledDesktop desk;
    const WindowID window = desk.open(desk.editor, Rect{100, 100, 500, 400});
    EXPECT_TRUE(desk.control.run(desk.command("command.right").id.text()));
    EXPECT_EQ(desk.frame(window), (Rect{960, 24, 960, 1080}));
    EXPECT_TRUE(desk.control.run(desk.command("command.left").id.lowercaseText()));
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 960, 1080}));
}

TEST(ApplicationControl, doesNothingForACommandThatDoesNotExist) {
    ControlledDesktop desk;
    const WindowID window = desk.open(desk.editor, Rect{100, 100, 500, 400});
    for (const char* const unknown :
         {"", "command.nowhere", "command.Left", "00000000-0000-0000-0000-000000000000"}) {
        EXPECT_FALSE(desk.control.run(unknown)) << unknown;
    }
    EXPECT_EQ(desk.frame(window), (Rect{100, 100, 500, 400}));
}

TEST(ApplicationControl, runsACommandAlsoWhileTheFeaturesAreStopped) {
    ControlledDesktop desk;
    const WindowID window = desk.open(desk.editor, Rect{100, 100, 500, 400});
    desk.conductor->stopFeatures();
    EXPECT_TRUE(desk.control.run("command.left"));
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 960, 1080}));
}

TEST(ApplicationControl, opensTheSettingsAtASectionOrAtTheLastOne) {
    ControlledDesktop desk;
    EXPECT_TRUE(desk.control.openSettings("oled"));
    EXPECT_EQ(desk.settingsWindow.shown, 1);
    ASSERT_TRUE(desk.settingsWindow.model);
    EXPECT_EQ(desk.settingsWindow.model->section(), SettingsSection::oled);
    EXPECT_TRUE(desk.control.openSettings(""));
    EXPECT_EQ(desk.settingsWindow.shown, 2);
    EXPECT_EQ(desk.settingsWindow.model->section(), SettingsSection::oled);
    EXPECT_FALSE(desk.control.openSettings("Oled"));
    EXPECT_EQ(desk.settingsWindow.shown, 2);
}

TEST(ApplicationControl, readsTheLinesOfTheStatusMenu) {
    ControlledDesktop desk;
    const auto lines = desk.conductor->oledStatusLines();
    EXPECT_EQ(desk.control.statusLines(), std::vector<std::string>(lines.begin(), lines.end()));
}

TEST(ApplicationControl, switchesEachProtectionAsTheSettingsDo) {
    ControlledDesktop desk;
    desk.conductor->openSettings();
    EXPECT_FALSE(desk.control.isOn(Protection::pixelShift));
    EXPECT_FALSE(desk.control.isOn(Protection::edgeJitter));
    EXPECT_TRUE(desk.control.isOn(Protection::idleDimming));

    desk.control.setOn(Protection::pixelShift, true);
    EXPECT_TRUE(desk.control.isOn(Protection::pixelShift));
    EXPECT_TRUE(desk.conductor->isProtectionActive());
    EXPECT_TRUE(desk.stored().orbitEnabled);
    EXPECT_TRUE(desk.settingsWindow.model->oled().orbitEnabled);

    desk.control.setOn(Protection::edgeJitter, true);
    desk.control.setOn(Protection::idleDimming, false);
    EXPECT_TRUE(desk.stored().jitterEnabled);
    EXPECT_FALSE(desk.stored().idleDimEnabled);
    EXPECT_TRUE(desk.conductor->orbit().jitter());
    EXPECT_EQ(desk.settingsWindow.model->oled(), desk.conductor->oledSettings());
}

TEST(ApplicationControl, theDemonstrationModeIsNeverStored) {
    ControlledDesktop desk;
    desk.control.setOn(Protection::edgeJitter, true);
    const auto before = desk.preferences.bytes(OLEDSettings::preferenceKey);
    desk.control.setExaggerated(true);
    EXPECT_TRUE(desk.control.isExaggerated());
    EXPECT_EQ(desk.conductor->jitter().tolerancePx, 20);
    EXPECT_EQ(desk.preferences.bytes(OLEDSettings::preferenceKey), before);
    desk.control.setExaggerated(false);
    EXPECT_FALSE(desk.control.isExaggerated());
    EXPECT_EQ(desk.conductor->jitter().tolerancePx, 3);
}

TEST(ApplicationControl, endsTheProgramAfterTheRequestHasReturned) {
    ControlledDesktop desk;
    int ended = 0;
    desk.conductor->menuTargets.terminate = [&ended] { ++ended; };
    desk.control.quit();
    EXPECT_EQ(ended, 0);
    desk.advance(0);
    EXPECT_EQ(ended, 1);
}

TEST(ApplicationControl, thereIsNothingToAskForOnceTheConductorIsGone) {
    ControlledDesktop desk;
    desk.control.quit();
    desk.conductor.reset();
    desk.advance(0);
    EXPECT_TRUE(desk.control.commands().empty());
    EXPECT_FALSE(desk.control.run("command.left"));
    EXPECT_FALSE(desk.control.openSettings(""));
    EXPECT_TRUE(desk.control.statusLines().empty());
    EXPECT_FALSE(desk.control.isOn(Protection::idleDimming));
    desk.control.setOn(Protection::idleDimming, true);
    desk.control.setExaggerated(true);
    EXPECT_FALSE(desk.control.isExaggerated());
}

}  // namespace
}  // namespace lumatile
