// The settings window as the conductor wires it, on a whole desktop.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "Lumatile/AppDelegate.h"
#include "Lumatile/SettingsViewModel.h"
#include "commands/CommandStore.h"
#include "oled_protection/OLEDSettingsCodec.h"
#include "tests/unit/Lumatile/DesktopWithConductor.h"

namespace lumatile {
namespace {

constexpr std::uint32_t controlOption = ClassicModifier::control | ClassicModifier::option;
constexpr std::uint32_t leftArrow = 123;
constexpr std::uint32_t keyA = 0;

bool holds(const SimulatedHotKeys& keys, const KeyCombination& combination) {
    const auto all = keys.registered();
    return std::find(all.begin(), all.end(), combination) != all.end();
}

struct DesktopWithSettings : DesktopWithConductor {
    DesktopWithSettings() { conductor->createStatusMenu(); }

    SettingsViewModel& model() {
        if (!settingsWindow.model) {
            conductor->openSettings();
        }
        return *settingsWindow.model;
    }

    void selectLeftHalf() { model().select(model().commands().front().id); }
};

TEST(ConductorSettings, theWindowIsMadeWhenItIsFirstOpenedAndKept) {
    DesktopWithSettings desk;
    EXPECT_EQ(desk.settingsWindow.windows, 0);
    desk.conductor->openSettings();
    desk.conductor->openSettings();
    EXPECT_EQ(desk.settingsWindow.windows, 1);
    EXPECT_EQ(desk.settingsWindow.shown, 2);
}

TEST(ConductorSettings, theMenuOpensItOnTheSectionThatWasShownLast) {
    DesktopWithSettings desk;
    desk.conductor->openSettings(SettingsSection::oled);
    EXPECT_EQ(desk.model().section(), SettingsSection::oled);
    ASSERT_TRUE(desk.statusItem.choose("Settings…"));
    EXPECT_EQ(desk.settingsWindow.shown, 2);
    EXPECT_EQ(desk.model().section(), SettingsSection::oled);
    desk.conductor->openSettings(SettingsSection::about);
    EXPECT_EQ(desk.model().section(), SettingsSection::about);
}

TEST(ConductorSettings, aChangedShortcutWorksAtOnceAndIsStored) {
    DesktopWithSettings desk;
    desk.selectLeftHalf();
    desk.model().record({keyA, controlOption, true});
    EXPECT_TRUE(holds(desk.hotKeys, {keyA, controlOption}));
    const auto stored = desk.preferences.bytes(CommandStore::preferenceKey);
    ASSERT_TRUE(stored);
    EXPECT_EQ(CommandStore::decode(*stored), desk.model().commands());
    EXPECT_EQ(desk.conductor->store().commands, desk.model().commands());
}

TEST(ConductorSettings, aRemovedShortcutIsFreeAlsoOfThePortraitTwin) {
    DesktopWithSettings desk;
    desk.selectLeftHalf();
    ASSERT_TRUE(holds(desk.hotKeys, {leftArrow, controlOption}));
    desk.model().setShortcutEnabled(false);
    EXPECT_FALSE(holds(desk.hotKeys, {leftArrow, controlOption}));
    desk.model().setShortcutEnabled(true);
    EXPECT_TRUE(holds(desk.hotKeys, {leftArrow, controlOption}));
    desk.model().removeShortcut();
    EXPECT_FALSE(holds(desk.hotKeys, {leftArrow, controlOption}));
}

TEST(ConductorSettings, aNewAreaIsInTheMenuAtOnce) {
    DesktopWithSettings desk;
    EXPECT_EQ(desk.statusItem.find("Custom Area"), nullptr);
    desk.model().addCustomArea();
    EXPECT_NE(desk.statusItem.find("Custom Area"), nullptr);
    desk.model().deleteSelected();
    EXPECT_EQ(desk.statusItem.find("Custom Area"), nullptr);
}

TEST(ConductorSettings, aShortcutIsNotRegisteredWhileTheFeaturesAreStopped) {
    DesktopWithSettings desk;
    desk.selectLeftHalf();
    desk.conductor->stopFeatures();
    desk.model().record({keyA, controlOption, true});
    EXPECT_TRUE(desk.hotKeys.registered().empty());
    desk.model().setRecording(true);
    desk.model().setRecording(false);
    EXPECT_TRUE(desk.hotKeys.registered().empty());
    desk.conductor->startFeatures();
    EXPECT_TRUE(holds(desk.hotKeys, {keyA, controlOption}));
}

TEST(ConductorSettings, ourShortcutsRestWhileOneIsRecorded) {
    DesktopWithSettings desk;
    desk.selectLeftHalf();
    const auto before = desk.hotKeys.registered();
    desk.model().setRecording(true);
    EXPECT_TRUE(desk.hotKeys.registered().empty());
    desk.model().setRecording(false);
    EXPECT_EQ(desk.hotKeys.registered(), before);
}

TEST(ConductorSettings, refusedShortcutsAreKnownFromTheStartAndAfterEachChange) {
    DesktopWithConductor desk;
    desk.hotKeys.take({leftArrow, controlOption});
    desk.conductor->stopFeatures();
    desk.conductor->startFeatures();
    desk.conductor->openSettings();
    SettingsViewModel& model = *desk.settingsWindow.model;
    const UUID left = model.commands().front().id;
    EXPECT_EQ(model.refusedShortcuts(), (std::vector<UUID>{left}));
    model.select(left);
    model.record({keyA, controlOption, true});
    EXPECT_FALSE(model.isShortcutRefused(model.commands().front()));
    desk.hotKeys.release({leftArrow, controlOption});
    model.record({leftArrow, controlOption, true});
    EXPECT_TRUE(model.refusedShortcuts().empty());
}

TEST(ConductorSettings, aDesktopThatRefusesTheRecordedShortcutIsTold) {
    DesktopWithSettings desk;
    desk.hotKeys.take({keyA, controlOption});
    desk.selectLeftHalf();
    desk.model().record({keyA, controlOption, true});
    EXPECT_TRUE(desk.model().isShortcutRefused(desk.model().commands().front()));
    EXPECT_EQ(desk.conductor->refusedShortcuts(),
              (std::vector<UUID>{desk.model().commands().front().id}));
    desk.conductor->stopFeatures();
    EXPECT_TRUE(desk.model().refusedShortcuts().empty());
}

TEST(ConductorSettings, whoHasARefusedShortcutIsNamedWhereTheDesktopTells) {
    DesktopWithSettings desk;
    desk.hotKeys.take({keyA, controlOption}, "Switch to Desktop 1 of KWin");
    desk.selectLeftHalf();
    desk.model().record({keyA, controlOption, true});
    EXPECT_EQ(desk.model().shortcutHolder(desk.model().commands().front()),
              "Switch to Desktop 1 of KWin");
    EXPECT_EQ(desk.model().shortcutHolder(desk.model().commands()[1]), "");
    desk.model().record({leftArrow, controlOption, true});
    EXPECT_EQ(desk.model().shortcutHolder(desk.model().commands().front()), "");
}

TEST(ConductorSettings, whatItsHolderLetsGoIsTakenWhereTheDesktopTells) {
    DesktopWithSettings desk;
    const KeyCombination combination{keyA, controlOption};
    desk.hotKeys.take(combination, "Switch to Desktop 1 of KWin");
    desk.selectLeftHalf();
    desk.model().record({keyA, controlOption, true});
    desk.hotKeys.tellAvailability();
    EXPECT_FALSE(holds(desk.hotKeys, combination)) << "not yet";

    desk.hotKeys.release(combination);
    desk.hotKeys.tellAvailability();
    EXPECT_TRUE(holds(desk.hotKeys, combination));
    EXPECT_TRUE(desk.model().refusedShortcuts().empty());

    desk.model().setRecording(true);
    desk.hotKeys.tellAvailability();
    EXPECT_TRUE(desk.hotKeys.registered().empty()) << "a recording goes on";
    desk.model().setRecording(false);
    desk.conductor->stopFeatures();
    desk.hotKeys.tellAvailability();
    EXPECT_TRUE(desk.hotKeys.registered().empty()) << "the features have been stopped";
}

TEST(ConductorSettings, theDesktopsListOfShortcutsNamesTheCommands) {
    DesktopWithSettings desk;
    EXPECT_EQ(desk.hotKeys.listed({leftArrow, controlOption}), "Left Half");
}

TEST(ConductorSettings, whatTheUserChangesInTheDesktopsListIsAnEdit) {
    DesktopWithSettings desk;
    desk.hotKeys.reassign({leftArrow, controlOption}, KeyCombination{keyA, controlOption});
    const SnapCommand& left = desk.model().commands().front();
    EXPECT_EQ(left.shortcut, (Shortcut{keyA, controlOption, true}));
    EXPECT_EQ(desk.conductor->store().commands, desk.model().commands());
    const auto stored = desk.preferences.bytes(CommandStore::preferenceKey);
    ASSERT_TRUE(stored.has_value());
    EXPECT_EQ(CommandStore::fromStored(stored).commands, desk.model().commands());
    EXPECT_EQ(desk.hotKeys.press({keyA, controlOption}), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.hotKeys.press({leftArrow, controlOption}), KeyReceiver::frontWindow);
    // The portrait twin, which the same keys run, has gone along.
    for (const SnapCommand& command : desk.model().commands()) {
        if (command.nameKey == left.nameKey) {
            EXPECT_EQ(command.shortcut, left.shortcut);
        }
    }

    desk.hotKeys.reassign({keyA, controlOption}, std::nullopt);
    EXPECT_EQ(desk.model().commands().front().shortcut, (Shortcut{keyA, controlOption, false}));
    EXPECT_EQ(desk.hotKeys.press({keyA, controlOption}), KeyReceiver::frontWindow);
}

TEST(ConductorSettings, aChangedProtectionIsStoredAndApplied) {
    DesktopWithSettings desk;
    OLEDSettings settings = desk.model().oled();
    settings.orbitEnabled = true;
    settings.orbitAmplitude = 5;
    desk.model().setOLED(settings);
    EXPECT_EQ(desk.conductor->oledSettings(), settings);
    const auto stored = desk.preferences.bytes(OLEDSettings::preferenceKey);
    ASSERT_TRUE(stored);
    EXPECT_EQ(OLEDSettingsCodec::decode(*stored), settings);
    EXPECT_EQ(desk.statusItem.image()->name, "MenuBarIcon");
}

TEST(ConductorSettings, theSameCommandsAreNoChange) {
    DesktopWithSettings desk;
    desk.preferences.setBytes(CommandStore::preferenceKey, "untouched");
    desk.conductor->changeCommands(std::vector<SnapCommand>(desk.conductor->store().commands));
    EXPECT_EQ(desk.preferences.bytes(CommandStore::preferenceKey), "untouched");
}

TEST(ConductorSettings, aModelThatOutlivesTheConductorDoesNothing) {
    DesktopWithSettings desk;
    desk.selectLeftHalf();
    const std::shared_ptr<SettingsViewModel> model = desk.settingsWindow.model;
    desk.conductor.reset();
    model->record({keyA, controlOption, true});
    model->setRecording(true);
    model->setOLED(OLEDSettings::recommended);
    EXPECT_FALSE(desk.preferences.bytes(CommandStore::preferenceKey));
    EXPECT_TRUE(desk.hotKeys.registered().empty());
}

}  // namespace
}  // namespace lumatile
