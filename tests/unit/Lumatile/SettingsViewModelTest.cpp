#include "Lumatile/SettingsViewModel.h"

#include <gtest/gtest.h>

#include "commands/BuiltInCommands.h"

namespace lumatile {
namespace {

constexpr std::uint32_t controlOption = ClassicModifier::control | ClassicModifier::option;
constexpr std::uint32_t keyA = 0;

class SettingsModel : public testing::Test {
protected:
    SettingsModel() {
        model.onChange = [this](const std::vector<SnapCommand>& commands) {
            told.push_back(commands);
        };
        model.onOLEDChange = [this](const OLEDSettings& settings) { oledTold.push_back(settings); };
        observation = model.observe([this] { ++changes; });
    }

    void selectBuiltIn(std::size_t index) { model.select(model.commands().at(index).id); }

    SettingsViewModel model{BuiltInCommands::defaults(), OLEDSettings::recommended};
    std::vector<std::vector<SnapCommand>> told;
    std::vector<OLEDSettings> oledTold;
    int changes = 0;
    SettingsViewModel::Observation observation;
};

TEST_F(SettingsModel, opensOnGeneralAndKeepsItsSection) {
    EXPECT_EQ(model.section(), SettingsSection::general);
    model.setSection(SettingsSection::oled);
    EXPECT_EQ(model.section(), SettingsSection::oled);
    EXPECT_EQ(changes, 1);
    model.setSection(SettingsSection::oled);
    EXPECT_EQ(changes, 1);
}

TEST_F(SettingsModel, aNewAreaGetsTheNextNameAndIsSelected) {
    model.addCustomArea();
    ASSERT_NE(model.selected(), nullptr);
    EXPECT_EQ(model.selected()->displayName(), "Custom Area");
    EXPECT_EQ(model.selected()->targetSegments, (std::vector<Segment>{{6, 3, 12, 6}}));
    model.addCustomArea();
    EXPECT_EQ(model.selected()->displayName(), "Custom Area 2");
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told.back(), model.commands());
    EXPECT_EQ(model.areas(true).size(), 2U);
}

TEST_F(SettingsModel, deletingTheSelectedAreaLeavesNothingSelected) {
    model.addCustomArea();
    model.deleteSelected();
    EXPECT_EQ(model.selectedID(), std::nullopt);
    EXPECT_EQ(model.selected(), nullptr);
    EXPECT_TRUE(model.areas(true).empty());
    EXPECT_EQ(told.back(), BuiltInCommands::defaults());
}

TEST_F(SettingsModel, aBuiltInAreaIsNeverDeletedOrRenamed) {
    selectBuiltIn(0);
    model.deleteSelected();
    EXPECT_FALSE(model.renameSelected("Mine"));
    EXPECT_EQ(model.commands(), BuiltInCommands::defaults());
    EXPECT_TRUE(told.empty());
}

TEST_F(SettingsModel, namesAreTrimmedAndBlankOnesRefused) {
    model.addCustomArea();
    EXPECT_TRUE(model.renameSelected("  Reading  "));
    EXPECT_EQ(model.selected()->displayName(), "Reading");
    EXPECT_FALSE(model.renameSelected("   "));
    EXPECT_EQ(model.selected()->displayName(), "Reading");
    EXPECT_TRUE(model.renameSelected("Reading"));
    EXPECT_EQ(told.size(), 2U) << "the same name is no edit";
}

TEST_F(SettingsModel, listsAreasOnlyAndPortraitTwinsOfTheirOwn) {
    const std::vector<SnapCommand> areas = model.areas(false);
    const auto ofKey = [&](Axis axis) {
        return std::count_if(areas.begin(), areas.end(), [&](const SnapCommand& each) {
            return each.nameKey == areas.front().nameKey && each.axis == axis;
        });
    };
    EXPECT_EQ(ofKey(Axis::horizontal), 1);
    EXPECT_EQ(ofKey(Axis::vertical), 1);
    EXPECT_TRUE(std::all_of(areas.begin(), areas.end(),
                            [](const SnapCommand& each) { return each.kind == Kind::area; }));
    EXPECT_LT(areas.size(), model.commands().size());
}

TEST_F(SettingsModel, aRecordedShortcutIsTakenAtOnce) {
    selectBuiltIn(0);
    model.record({keyA, controlOption, true});
    EXPECT_EQ(model.selected()->shortcut, (Shortcut{keyA, controlOption, true}));
    EXPECT_EQ(model.refusal(), std::nullopt);
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(SettingsModel, aBareKeyIsRefused) {
    selectBuiltIn(0);
    const auto before = model.selected()->shortcut;
    model.record({keyA, 0, true});
    EXPECT_EQ(model.selected()->shortcut, before);
    ASSERT_TRUE(model.refusal());
    EXPECT_EQ(model.refusal()->reason, SettingsViewModel::Refusal::Reason::bareKey);
    EXPECT_EQ(model.refusal()->holder, std::nullopt);
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(changes, 2) << "selected, and refused";
}

TEST_F(SettingsModel, aBareEscapeChangesNothingWithoutAWord) {
    selectBuiltIn(0);
    const auto before = model.selected()->shortcut;
    model.record({53, 0, true});
    EXPECT_EQ(model.selected()->shortcut, before);
    EXPECT_EQ(model.refusal(), std::nullopt);
    EXPECT_TRUE(told.empty());
}

TEST_F(SettingsModel, aKeyWithoutACodeIsRefused) {
    model.recordUnusableKey();
    EXPECT_EQ(model.refusal(), std::nullopt) << "nothing is selected";
    selectBuiltIn(0);
    model.recordUnusableKey();
    ASSERT_TRUE(model.refusal());
    EXPECT_EQ(model.refusal()->reason, SettingsViewModel::Refusal::Reason::noCode);
    EXPECT_TRUE(told.empty());
}

TEST_F(SettingsModel, aTakenCombinationIsRefusedWithItsHolder) {
    const SnapCommand holder = model.commands()[1];
    selectBuiltIn(0);
    model.record(*holder.shortcut);
    EXPECT_NE(model.selected()->shortcut, holder.shortcut);
    ASSERT_TRUE(model.refusal());
    ASSERT_TRUE(model.refusal()->holder);
    EXPECT_EQ(model.refusal()->reason, SettingsViewModel::Refusal::Reason::taken);
    EXPECT_EQ(model.refusal()->holder, holder);
    EXPECT_TRUE(told.empty());
}

TEST_F(SettingsModel, theRefusalGoesWithTheSelectionAndWithTheNextTry) {
    selectBuiltIn(0);
    model.record({keyA, 0, true});
    selectBuiltIn(1);
    EXPECT_EQ(model.refusal(), std::nullopt);
    model.record({keyA, 0, true});
    EXPECT_TRUE(model.refusal());
    model.setRecording(true);
    EXPECT_EQ(model.refusal(), std::nullopt);
}

TEST_F(SettingsModel, aTwinHasTheShortcutRightly) {
    for (const SnapCommand& command : model.commands()) {
        EXPECT_EQ(model.conflict(command), std::nullopt) << command.displayName();
    }
}

TEST_F(SettingsModel, aShortcutCanBeSwitchedOffAndRemoved) {
    selectBuiltIn(0);
    model.setShortcutEnabled(false);
    EXPECT_FALSE(model.selected()->shortcut->enabled);
    model.setShortcutEnabled(false);
    EXPECT_EQ(told.size(), 1U);
    model.removeShortcut();
    EXPECT_EQ(model.selected()->shortcut, std::nullopt);
    model.removeShortcut();
    model.setShortcutEnabled(true);
    EXPECT_EQ(told.size(), 2U);
}

TEST_F(SettingsModel, ourOwnShortcutsRestWhileOneIsRecorded) {
    std::vector<bool> recording;
    model.onRecording = [&](bool isRecording) { recording.push_back(isRecording); };
    model.setRecording(true);
    model.setRecording(true);
    model.setRecording(false);
    model.setRecording(false);
    EXPECT_EQ(recording, (std::vector<bool>{true, false}));
}

TEST_F(SettingsModel, paintingChangesThePictureAndCommittingTheAreaOnce) {
    selectBuiltIn(0);
    const SnapCommand before = *model.selected();
    model.paint({2, 2}, {5, 4});
    model.paint({2, 2}, {6, 4});
    EXPECT_EQ(*model.selected(), before);
    EXPECT_EQ(model.painted()->targetSegments, (std::vector<Segment>{{2, 2, 5, 3}}));
    EXPECT_TRUE(told.empty());
    model.commitPaint();
    EXPECT_EQ(model.selected()->targetSegments, (std::vector<Segment>{{2, 2, 5, 3}}));
    EXPECT_EQ(told.size(), 1U);
    model.commitPaint();
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(SettingsModel, cellsOutsideTheGridCountAsThoseOnItsEdge) {
    model.addCustomArea();
    model.paint({-4, -1}, {40, 3});
    EXPECT_EQ(model.painted()->targetSegments, (std::vector<Segment>{{0, 0, 24, 4}}));
}

TEST_F(SettingsModel, aPaintedBlockDoesNotOutliveTheSelection) {
    selectBuiltIn(0);
    model.paint({2, 2}, {5, 4});
    selectBuiltIn(1);
    model.commitPaint();
    EXPECT_EQ(model.commands(), BuiltInCommands::defaults());
    EXPECT_TRUE(told.empty());
}

TEST_F(SettingsModel, aPaintedBlockThatIsGivenUpLeavesTheStoredAreaShown) {
    selectBuiltIn(0);
    model.paint({2, 2}, {5, 4});
    model.cancelPaint();
    EXPECT_EQ(model.painted(), *model.selected());
    model.commitPaint();
    EXPECT_TRUE(told.empty());
}

TEST_F(SettingsModel, whetherAnAreaDiffersFromItsDefaultIsKnown) {
    EXPECT_FALSE(model.differsFromDefault());
    selectBuiltIn(0);
    EXPECT_FALSE(model.differsFromDefault());
    model.paint({2, 2}, {5, 4});
    EXPECT_FALSE(model.differsFromDefault()) << "what is stored counts";
    model.commitPaint();
    EXPECT_TRUE(model.differsFromDefault());
    model.addCustomArea();
    EXPECT_FALSE(model.differsFromDefault());
}

TEST_F(SettingsModel, theDefaultAreaComesBackAndTheRestStays) {
    selectBuiltIn(0);
    model.record({keyA, controlOption, true});
    model.paint({2, 2}, {5, 4});
    model.commitPaint();
    model.restoreDefaultArea();
    SnapCommand expected = BuiltInCommands::defaults().front();
    expected.shortcut = Shortcut{keyA, controlOption, true};
    EXPECT_EQ(*model.selected(), expected);
    EXPECT_EQ(told.size(), 3U);
    model.restoreDefaultArea();
    EXPECT_EQ(told.size(), 3U);
}

TEST_F(SettingsModel, eachChangeOfAProtectionIsToldOnce) {
    OLEDSettings settings = model.oled();
    settings.orbitAmplitude = 4;
    model.setOLED(settings);
    model.setOLED(settings);
    EXPECT_EQ(oledTold, (std::vector<OLEDSettings>{settings}));
    EXPECT_TRUE(told.empty());
}

TEST_F(SettingsModel, refusedShortcutsAreKnownByTheirCommand) {
    const UUID id = model.commands()[2].id;
    EXPECT_EQ(model.firstRefusedArea(), std::nullopt);
    model.setRefusedShortcuts({id});
    EXPECT_TRUE(model.isShortcutRefused(model.commands()[2]));
    EXPECT_FALSE(model.isShortcutRefused(model.commands()[0]));
    EXPECT_EQ(model.firstRefusedArea(), id);
    EXPECT_EQ(changes, 1);
}

TEST_F(SettingsModel, whatOthersChangedIsTakenOverSilently) {
    model.addCustomArea();
    told.clear();
    OLEDSettings settings;
    settings.jitterEnabled = false;
    model.replace(BuiltInCommands::defaults(), settings);
    EXPECT_EQ(model.commands(), BuiltInCommands::defaults());
    EXPECT_EQ(model.oled(), settings);
    EXPECT_EQ(model.selectedID(), std::nullopt) << "the selected one is gone";
    EXPECT_TRUE(told.empty());
    EXPECT_TRUE(oledTold.empty());
}

TEST_F(SettingsModel, anObserverMayEndItselfAndChangeTheModelAgain) {
    observation.reset();
    int calls = 0;
    SettingsViewModel::Observation own;
    own = model.observe([&] {
        ++calls;
        own.reset();
        model.setSection(SettingsSection::about);
    });
    model.setSection(SettingsSection::oled);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(model.section(), SettingsSection::about);
}

}  // namespace
}  // namespace lumatile
