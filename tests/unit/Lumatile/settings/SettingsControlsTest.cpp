// The sections and their plain controls, worked as a user works them.

#include <QComboBox>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSlider>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Lumatile/DragToSnap.h"
#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/widgets/SymbolIcon.h"
#include "Lumatile/widgets/ToggleSwitch.h"
#include "onboarding/TipTexts.h"
#include "tests/unit/Lumatile/settings/SettingsControls.h"

namespace lumatile {
namespace {

TEST_F(SettingsControls, theWindowIsAsLargeAsItShouldBe) {
    EXPECT_EQ(stage.window().windowTitle().toStdString(), "Lumatile Settings");
    EXPECT_LE(stage.window().minimumWidth(), 860);
    EXPECT_LE(stage.window().minimumHeight(), 540);
}

TEST_F(SettingsControls, theSidebarLeadsToEachSection) {
    auto* sidebar = named<QListWidget>(SettingsTexts::sidebar);
    ASSERT_NE(sidebar, nullptr);
    ASSERT_EQ(sidebar->count(), 4);
    for (const SettingsSection section : settingsSections) {
        const auto row = static_cast<int>(section);
        EXPECT_EQ(sidebar->item(row)->text().toStdString(), title(section));
        EXPECT_TRUE(SymbolIcon::isKnown(symbol(section)));
        sidebar->setCurrentRow(row);
        EXPECT_EQ(stage.model().section(), section);
    }
}

TEST_F(SettingsControls, closedAndOpenedAgainItShowsTheSectionShownLast) {
    open(SettingsSection::oled);
    stage.window().close();
    EXPECT_FALSE(stage.window().isVisible());
    stage.show();
    EXPECT_TRUE(stage.window().isVisible());
    EXPECT_EQ(stage.model().section(), SettingsSection::oled);
}

TEST_F(SettingsControls, launchAtLoginShowsTheRealState) {
    auto* toggle = named<ToggleSwitch>(SettingsTexts::launchAtLogin);
    ASSERT_NE(toggle, nullptr);
    EXPECT_FALSE(toggle->isChecked());
    toggle->click();
    EXPECT_EQ(stage.login.state, LoginItem::Status::enabled);
    EXPECT_TRUE(toggle->isChecked());
    toggle->click();
    EXPECT_EQ(stage.login.state, LoginItem::Status::notRegistered);
    stage.login.refuses = true;
    toggle->click();
    EXPECT_FALSE(toggle->isChecked()) << "a refused registration leaves it off";
}

TEST_F(SettingsControls, draggingIsSwitchedByItsPreference) {
    auto* toggle = named<ToggleSwitch>(SettingsTexts::dragToSnap);
    ASSERT_NE(toggle, nullptr);
    EXPECT_TRUE(toggle->isChecked()) << "what is not stored counts as on";
    toggle->click();
    EXPECT_EQ(stage.desktop().preferences.boolean(DragToSnap::preferenceKey), false);
    toggle->click();
    EXPECT_EQ(stage.desktop().preferences.boolean(DragToSnap::preferenceKey), true);
}

TEST_F(SettingsControls, automaticUpdatesAreTheUpdaters) {
    auto* toggle = named<ToggleSwitch>(SettingsTexts::automaticUpdates);
    ASSERT_NE(toggle, nullptr);
    EXPECT_TRUE(toggle->isChecked());
    toggle->click();
    EXPECT_FALSE(stage.updates->isAutomatic);
    named<QPushButton>(SettingsTexts::checkForUpdates)->click();
    EXPECT_EQ(stage.updates->checks, 1);
}

TEST_F(SettingsControls, everyCommandCanBeRunAndTheProgramQuit) {
    auto* menu = stage.window().findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    stage.model().addCustomArea();
    emit menu->aboutToShow();
    std::vector<std::string> titles;
    for (const QAction* action : menu->actions()) {
        titles.push_back(action->isSeparator() ? "-" : action->text().toStdString());
    }
    EXPECT_EQ(titles, (std::vector<std::string>{"Left Half",
                                                "Right Half",
                                                "Top Half",
                                                "Bottom Half",
                                                "-",
                                                "Top Left",
                                                "Top Right",
                                                "Bottom Left",
                                                "Bottom Right",
                                                "-",
                                                "Left Third",
                                                "Center Third",
                                                "Right Third",
                                                "-",
                                                "Left Two Thirds",
                                                "Center Two Thirds",
                                                "Right Two Thirds",
                                                "-",
                                                "Maximize",
                                                "Center",
                                                "Restore",
                                                "-",
                                                "Next Display",
                                                "Previous Display",
                                                "-",
                                                "Your Areas",
                                                "Custom Area"}))
        << "the portrait twins would only stand there twice";
    menu->actions().at(1)->trigger();
    ASSERT_EQ(stage.ran.size(), 1U);
    EXPECT_EQ(stage.ran.front(), stage.model().commands()[1]);
    named<QPushButton>(SettingsTexts::quit)->click();
    EXPECT_EQ(stage.quits, 1);
}

TEST_F(SettingsControls, everyProtectionHasItsControl) {
    open(SettingsSection::oled);
    OLEDSettings expected = OLEDSettings::recommended;
    const auto told = [&] {
        return oledTold.empty() ? OLEDSettings::recommended : oledTold.back();
    };
    named<ToggleSwitch>(SettingsTexts::waitForPause)->click();
    expected.orbitWaitForPause = false;
    EXPECT_EQ(told(), expected);
    named<QSlider>(SettingsTexts::distance)->setValue(6);
    expected.orbitAmplitude = 6;
    EXPECT_EQ(told(), expected);
    auto* interval = named<QComboBox>(SettingsTexts::moveEvery);
    interval->setCurrentIndex(2);
    emit interval->activated(2);
    expected.orbitStepInterval = 30;
    EXPECT_EQ(told(), expected);
    named<QSlider>(SettingsTexts::range)->setValue(1);
    expected.jitterTolerance = 1;
    EXPECT_EQ(told(), expected);
    named<QSlider>(SettingsTexts::after)->setValue(30);
    expected.idleThreshold = 1800;
    EXPECT_EQ(told(), expected);
    named<QSlider>(SettingsTexts::strength)->setValue(44);
    expected.idleDimStrength = 0.45;
    EXPECT_EQ(told(), expected);
    EXPECT_TRUE(shows("45%"));
    EXPECT_TRUE(shows("30 min"));
    EXPECT_TRUE(shows("6 px"));
    named<ToggleSwitch>(SettingsTexts::driftWindows)->click();
    named<ToggleSwitch>(SettingsTexts::varyEdges)->click();
    named<ToggleSwitch>(SettingsTexts::dimWhenIdle)->click();
    expected.orbitEnabled = expected.jitterEnabled = expected.idleDimEnabled = false;
    EXPECT_EQ(told(), expected);
    EXPECT_EQ(oledTold.size(), 9U) << "each change once";
    EXPECT_FALSE(named<QSlider>(SettingsTexts::distance)->isEnabled());
    named<QPushButton>(SettingsTexts::restoreRecommended)->click();
    EXPECT_EQ(told(), OLEDSettings::recommended);
    EXPECT_TRUE(shows("30%"));
}

TEST_F(SettingsControls, rangesAndChoicesOfTheProtections) {
    open(SettingsSection::oled);
    const auto range = [&](std::string_view name) {
        const auto* slider = named<QSlider>(name);
        return std::pair(slider->minimum(), slider->maximum());
    };
    EXPECT_EQ(range(SettingsTexts::distance), std::pair(1, 6));
    EXPECT_EQ(range(SettingsTexts::range), std::pair(1, 6));
    EXPECT_EQ(range(SettingsTexts::after), std::pair(1, 30));
    EXPECT_EQ(range(SettingsTexts::strength), std::pair(10, 80));
    const auto* interval = named<QComboBox>(SettingsTexts::moveEvery);
    std::vector<std::string> choices;
    for (int i = 0; i < interval->count(); ++i) {
        choices.push_back(interval->itemText(i).toStdString());
    }
    EXPECT_EQ(choices, (std::vector<std::string>{"5 s", "15 s", "30 s", "1 min", "2 min", "5 min",
                                                 "10 min"}));
}

TEST_F(SettingsControls, everyTextOfTheProtectionsStandsThere) {
    open(SettingsSection::oled);
    for (const std::string_view text :
         {SettingsTexts::windowOrbit, SettingsTexts::driftWindows, SettingsTexts::distance,
          SettingsTexts::moveEvery, SettingsTexts::waitForPause, SettingsTexts::orbitNote,
          SettingsTexts::edgeJitter, SettingsTexts::varyEdges, SettingsTexts::range,
          SettingsTexts::jitterNote, SettingsTexts::idleDimming, SettingsTexts::dimWhenIdle,
          SettingsTexts::after, SettingsTexts::strength, SettingsTexts::dimNote,
          SettingsTexts::statusNote, TipTexts::protection.text}) {
        EXPECT_TRUE(shows(text)) << text;
    }
}

TEST_F(SettingsControls, aboutNamesProgramVersionAndLicences) {
    open(SettingsSection::about);
    EXPECT_TRUE(shows("Lumatile"));
    EXPECT_TRUE(shows("Version 1.2.3"));
    EXPECT_TRUE(shows(SettingsTexts::description));
}

TEST_F(SettingsControls, theKeysOfTheMenuWorkInTheWindow) {
    const auto trigger = [&](const QKeySequence& keys) {
        for (QAction* action : stage.window().actions()) {
            if (action->shortcut() == keys) {
                action->trigger();
                return;
            }
        }
        ADD_FAILURE() << "there is no " << keys.toString().toStdString();
    };
    trigger(QKeySequence(QStringLiteral("Ctrl+Q")));
    EXPECT_EQ(stage.quits, 1);
    trigger(QKeySequence(QStringLiteral("Ctrl+W")));
    EXPECT_FALSE(stage.window().isVisible());
    trigger(QKeySequence(QStringLiteral("Ctrl+,")));
    EXPECT_TRUE(stage.window().isVisible());
}

}  // namespace
}  // namespace lumatile
