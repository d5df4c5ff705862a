// The shortcut of an area: its recorder, refusals, and switching it off.

#include <QApplication>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/settings/ShortcutRecorderView.h"
#include "Lumatile/widgets/ToggleSwitch.h"
#include "tests/unit/Lumatile/settings/SettingsControls.h"

namespace lumatile {
namespace {

TEST_F(SettingsControls, clickingTheFieldRecordsTheNextKey) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    std::vector<bool> recording;
    stage.model().onRecording = [&](bool isRecording) { recording.push_back(isRecording); };
    auto* field = named<RecorderField>(SettingsTexts::shortcut);
    ASSERT_NE(field, nullptr);
    stage.window().activateWindow();
    mouse(*field, QEvent::MouseButtonPress, {5, 5});
    ASSERT_TRUE(field->isRecording());
    EXPECT_EQ(recording, (std::vector<bool>{true}));
    press(*field, Qt::Key_Meta, Qt::MetaModifier, 55);
    press(*field, Qt::Key_Shift, Qt::MetaModifier | Qt::ShiftModifier, 56);
    EXPECT_TRUE(field->isRecording()) << "modifiers are only on the way";
    press(*field, Qt::Key_Left, Qt::MetaModifier | Qt::ShiftModifier, 123);
    EXPECT_FALSE(field->isRecording());
    EXPECT_EQ(recording, (std::vector<bool>{true, false}));
    EXPECT_EQ(selected().shortcut, (Shortcut{123, 0x300, true}));
    EXPECT_EQ(commandChanges, 1);
}

TEST_F(SettingsControls, theRowHasItsRoomOnAScreenThatIsNarrowerThanTheWindow) {
    open(SettingsSection::commands);
    selectBuiltIn(0);
    auto* frame = named<RecorderFrame>(SettingsTexts::recordShortcut);
    auto* isOn = named<ToggleSwitch>(SettingsTexts::shortcutOn);
    auto* list = named<QListWidget>(SettingsTexts::builtIn);
    int before = 0;
    for (const int width : {920, 800, 740}) {
        stage.window().setMinimumSize(width, 540);  // As on a screen of that width.
        stage.window().resize(width, 540);
        QApplication::processEvents();
        EXPECT_LT(frame->geometry().right(), isOn->geometry().left()) << width;
        EXPECT_LE(isOn->geometry().right(), isOn->parentWidget()->width()) << width;
        EXPECT_LE(isOn->mapTo(&stage.window(), isOn->rect().bottomRight()).x(), width) << width;
        EXPECT_LT(list->width(), before == 0 ? width : before) << "the list gives way";
        before = list->width();
    }
}

TEST_F(SettingsControls, aBareEscapeIsReportedAndItsReceiverStaysSilent) {
    open(SettingsSection::commands);
    selectBuiltIn(0);
    const auto before = selected().shortcut;
    auto* field = named<RecorderField>(SettingsTexts::shortcut);
    std::optional<Shortcut> recorded;
    const auto receiver = field->onRecord;
    field->onRecord = [&](const Shortcut& shortcut) {
        recorded = shortcut;
        receiver(shortcut);
    };
    beginRecording();
    press(*field, Qt::Key_Escape, {}, 53);
    EXPECT_EQ(recorded, (Shortcut{53, 0, true}));
    EXPECT_FALSE(field->isRecording());
    EXPECT_EQ(selected().shortcut, before);
    EXPECT_FALSE(shows(SettingsTexts::bareKey));
    EXPECT_TRUE(named<RecorderFrame>(SettingsTexts::recordShortcut)->hasFocus());
    beginRecording();
    press(*field, Qt::Key_A, {}, 1);
    EXPECT_TRUE(shows(SettingsTexts::bareKey)) << "any other bare key is refused with a word";
}

TEST_F(SettingsControls, aKeyWithoutACodeSaysThatItCannotBeUsed) {
    open(SettingsSection::commands);
    selectBuiltIn(0);
    auto* field = named<RecorderField>(SettingsTexts::shortcut);
    beginRecording();
    press(*field, Qt::Key_LaunchMail, Qt::ControlModifier, SimulatedKeyCodes::withoutCode);
    EXPECT_FALSE(field->isRecording());
    EXPECT_TRUE(shows(SettingsTexts::unusableKey));
    EXPECT_EQ(commandChanges, 0);
    beginRecording();
    EXPECT_FALSE(shows(SettingsTexts::unusableKey)) << "the next try begins afresh";
}

TEST_F(SettingsControls, spaceAndReturnOnTheFrameBeginTheRecording) {
    open(SettingsSection::commands);
    selectBuiltIn(0);
    auto* field = named<RecorderField>(SettingsTexts::shortcut);
    auto* frame = named<RecorderFrame>(SettingsTexts::recordShortcut);
    EXPECT_TRUE(frame->isAncestorOf(field));
    EXPECT_TRUE(frame->isAncestorOf(named<QToolButton>(SettingsTexts::removeShortcut)));
    for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        frame->setFocus();
        EXPECT_FALSE(field->isRecording());
        press(*frame, key);
        EXPECT_TRUE(field->isRecording());
        press(*field, Qt::Key_Escape, {}, 53);
    }
    press(*frame, Qt::Key_A);
    EXPECT_FALSE(field->isRecording());
}

TEST_F(SettingsControls, theRecorderIsDrawnAnewOnlyForAnotherShortcut) {
    class Painted final : public QObject {
    public:
        bool eventFilter(QObject* watched, QEvent* event) override {
            times += event->type() == QEvent::Paint ? 1 : 0;
            return QObject::eventFilter(watched, event);
        }
        int times = 0;
    };
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    QApplication::processEvents();
    auto* field = named<RecorderField>(SettingsTexts::shortcut);
    EXPECT_EQ(field->sizeHint(), (QSizeF(180, 24) * AppFonts::pixelsPerPoint()).toSize());
    Painted painted;
    field->installEventFilter(&painted);
    Shortcut shortcut = *selected().shortcut;
    field->setCurrent(shortcut);
    QApplication::processEvents();
    EXPECT_EQ(painted.times, 0);
    shortcut.enabled = false;
    field->setCurrent(shortcut);
    QApplication::processEvents();
    EXPECT_EQ(painted.times, 1);
    field->setCurrent(std::nullopt);
    QApplication::processEvents();
    EXPECT_EQ(painted.times, 2);
    field->removeEventFilter(&painted);
}

TEST_F(SettingsControls, clickingBesideTheControlsEndsRecording) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    auto* field = named<RecorderField>(SettingsTexts::shortcut);
    beginRecording();
    ASSERT_TRUE(field->isRecording());
    // The corner of the page, where there is nothing.
    QWidget& window = stage.window();
    QTest::mouseClick(window.childAt(window.width() - 3, 3), Qt::LeftButton, {}, {2, 2});
    EXPECT_FALSE(field->isRecording());
    EXPECT_EQ(commandChanges, 0);
}

TEST_F(SettingsControls, clickingElsewhereRecordsNothing) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    auto* field = named<RecorderField>(SettingsTexts::shortcut);
    beginRecording();
    ASSERT_TRUE(field->isRecording());
    group(false).setFocus();
    EXPECT_FALSE(field->isRecording());
    EXPECT_EQ(commandChanges, 0);
}

TEST_F(SettingsControls, closingTheWindowEndsRecording) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    auto* field = named<RecorderField>(SettingsTexts::shortcut);
    beginRecording();
    stage.window().close();
    EXPECT_FALSE(field->isRecording());
}

TEST_F(SettingsControls, theFrameFitsWhatItHolds) {
    open(SettingsSection::commands);
    selectBuiltIn(0);
    auto* frame = named<RecorderFrame>(SettingsTexts::recordShortcut);
    const int with = frame->width();
    stage.model().removeShortcut();
    QApplication::processEvents();
    EXPECT_EQ(frame->width(), frame->sizeHint().width());
    EXPECT_LT(frame->width(), with);
    stage.model().addCustomArea();
    selectBuiltIn(1);
    EXPECT_EQ(frame->width(), with);
    stage.model().addCustomArea();
    QApplication::processEvents();
    EXPECT_LT(frame->width(), with);
}

TEST_F(SettingsControls, aTakenShortcutIsNamedWithItsHolderAsTheListNamesIt) {
    open(SettingsSection::commands);
    std::vector<SnapCommand> commands = stage.model().commands();
    const auto portrait = std::find_if(commands.begin(), commands.end(), [](const auto& each) {
        return each.axis == Axis::vertical && each.nameKey == "command.leftThird";
    });
    ASSERT_NE(portrait, commands.end());
    portrait->shortcut = Shortcut{11, 0x1800, true};
    stage.model().replace(commands, stage.model().oled());
    selectBuiltIn(0);
    auto* field = named<RecorderField>(SettingsTexts::shortcut);
    beginRecording();
    press(*field, Qt::Key_Right, Qt::ControlModifier | Qt::AltModifier, 124);
    EXPECT_TRUE(shows("Already used by Right Half"));
    beginRecording();
    press(*field, Qt::Key_B, Qt::ControlModifier | Qt::AltModifier, 11);
    EXPECT_TRUE(shows("Already used by Top Third (Portrait)"));
    EXPECT_EQ(commandChanges, 0);
}

TEST_F(SettingsControls, anAreaNamesTheTwinThatSharesItsShortcut) {
    open(SettingsSection::commands);
    selectBuiltIn(8);
    EXPECT_TRUE(shows("Shared with Top Third (Portrait)"));
    stage.model().select(stage.model().sharingTwin(selected())->id);
    EXPECT_TRUE(shows("Shared with Left Third"));
    stage.model().removeShortcut();
    EXPECT_FALSE(shows("Shared with Left Third"));
}

TEST_F(SettingsControls, aRefusedShortcutIsToldInItsRowAndOnThePage) {
    open(SettingsSection::commands);
    stage.model().setRefusedShortcuts(
        {stage.model().commands()[0].id, stage.model().commands()[1].id});
    EXPECT_TRUE(shows("2 shortcuts belong to other programs on this desktop."));
    stage.model().select(stage.model().commands()[0].id);
    EXPECT_TRUE(shows(SettingsTexts::refusedHere));
    stage.model().select(stage.model().commands()[2].id);
    EXPECT_FALSE(shows(SettingsTexts::refusedHere));
    stage.model().setRefusedShortcuts({stage.model().commands()[1].id});
    EXPECT_TRUE(shows("1 shortcut belongs to another program on this desktop."));
}

TEST_F(SettingsControls, aRefusedShortcutSaysWhoHasIt) {
    open(SettingsSection::commands);
    const UUID id = stage.model().commands()[0].id;
    stage.model().setRefusedShortcuts({id}, {{id, "Switch to Desktop 1 of KWin"}});
    stage.model().select(id);
    EXPECT_TRUE(shows("This shortcut belongs to “Switch to Desktop 1 of KWin”"));
    stage.model().setRefusedShortcuts({id});
    EXPECT_TRUE(shows(SettingsTexts::refusedHere));
}

TEST_F(SettingsControls, aShortcutIsSwitchedOffAndRemoved) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    named<ToggleSwitch>(SettingsTexts::shortcutOn)->click();
    EXPECT_FALSE(selected().shortcut->enabled);
    auto* cross = named<QToolButton>(SettingsTexts::removeShortcut);
    cross->setFocus();
    cross->click();
    EXPECT_EQ(selected().shortcut, std::nullopt);
    EXPECT_FALSE(cross->isVisible());
    EXPECT_TRUE(named<RecorderFrame>(SettingsTexts::recordShortcut)->hasFocus());
}

}  // namespace
}  // namespace lumatile
