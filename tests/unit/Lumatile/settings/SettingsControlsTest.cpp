// Every control of the settings, worked as a user works it.

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFontInfo>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QSlider>
#include <QStyle>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "Lumatile/DragToSnap.h"
#include "Lumatile/settings/GridEditorView.h"
#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/settings/ShortcutRecorderView.h"
#include "Lumatile/widgets/SymbolIcon.h"
#include "Lumatile/widgets/ToggleSwitch.h"
#include "onboarding/TipTexts.h"
#include "tests/unit/Lumatile/settings/SettingsStage.h"

namespace lumatile {
namespace {

class SettingsControls : public testing::Test {
protected:
    SettingsControls() {
        stage.model().onChange = [this](const auto&) { ++commandChanges; };
        stage.model().onOLEDChange = [this](const auto& oled) { oledTold.push_back(oled); };
        stage.show();
        stage.window().resize(920, 600);
    }

    void open(SettingsSection section) {
        stage.model().setSection(section);
        QApplication::processEvents();
    }

    /// The program's own controls have no meta object of their own, so the toolkit cannot find them
    /// by their type.
    template <typename Control>
    std::vector<Control*> all() {
        std::vector<Control*> found;
        for (QWidget* widget : stage.window().findChildren<QWidget*>()) {
            if (auto* control = dynamic_cast<Control*>(widget)) {
                found.push_back(control);
            }
        }
        return found;
    }

    /// The control of that type which a screen reader knows by that name.
    template <typename Control>
    Control* named(std::string_view name) {
        const QString wanted = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
        for (Control* control : all<Control>()) {
            const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(control);
            // A box of choices is known by its choice here, and named by its label.
            if ((seen != nullptr && seen->text(QAccessible::Name) == wanted) ||
                control->accessibleName() == wanted) {
                return control;
            }
        }
        ADD_FAILURE() << "there is no " << name;
        return nullptr;
    }

    /// As it reads, without the marks of the letters that Alt reaches.
    static QString unmarked(QString text) {
        return text.replace(QLatin1String("&&"), QString(QChar(0)))
            .remove(u'&')
            .replace(QChar(0), QLatin1String("&"));
    }

    bool shows(std::string_view text) {
        const QString wanted = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
        const auto labels = stage.window().findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
            return label->isVisible() &&
                   (label->buddy() ? unmarked(label->text()) : label->text()) == wanted;
        });
    }

    /// The button that reads so, wherever it is.
    void click(const char* text) {
        for (QPushButton* button : stage.window().findChildren<QPushButton*>()) {
            if (unmarked(button->text()) == QString::fromUtf8(text)) {
                button->click();
                QApplication::processEvents();
                return;
            }
        }
        ADD_FAILURE() << "there is no " << text;
    }

    static void press(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = {},
                      quint32 scanCode = 0) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, scanCode, 0, 0);
        QApplication::sendEvent(&widget, &event);
    }

    static void mouse(QWidget& widget, QEvent::Type type, const QPointF& at,
                      Qt::MouseButton button = Qt::LeftButton) {
        QMouseEvent event(type, at, widget.mapToGlobal(at), button,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, {});
        QApplication::sendEvent(&widget, &event);
    }

    static QPointF middleOf(const GridEditorView& grid, const GridCell& cell, Axis axis) {
        const auto layout = GridEditorLayout::of(
            {static_cast<double>(grid.width()), static_cast<double>(grid.height())}, axis);
        const Rect rect = layout.cell(cell);
        return {rect.midX(), rect.midY()};
    }

    const SnapCommand& selected() { return *stage.model().selected(); }

    SettingsStage stage;
    int commandChanges = 0;
    std::vector<OLEDSettings> oledTold;
};

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

TEST_F(SettingsControls, theTipFollowsTheDesktopsTiling) {
    EXPECT_TRUE(shows(TipTexts::tilingIsOn.title));
    EXPECT_TRUE(shows(TipTexts::tilingIsOn.text));
    stage.tiling.isOn = false;
    stage.desktop().advance(1.6);
    EXPECT_FALSE(shows(TipTexts::tilingIsOn.title));
    EXPECT_TRUE(shows(TipTexts::tilingIsOff.text));
}

TEST_F(SettingsControls, theTipIsReadOnlyWhileItIsOnScreen) {
    stage.window().close();
    stage.tiling.isOn = false;
    stage.desktop().advance(10);
    open(SettingsSection::oled);
    stage.show();
    stage.desktop().advance(10);
    open(SettingsSection::general);
    EXPECT_TRUE(shows(TipTexts::tilingIsOn.title)) << "nobody looked while it was hidden";
    stage.desktop().advance(1.6);
    EXPECT_TRUE(shows(TipTexts::tilingIsOff.text));
}

TEST_F(SettingsControls, theTipsButtonOpensTheDesktopsSettings) {
    click("Open Desktop & Dock Settings…");
    EXPECT_EQ(stage.tiling.opened, 1);
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

TEST_F(SettingsControls, areasAreListedInTheirGroups) {
    open(SettingsSection::commands);
    auto* list = named<QListWidget>(title(SettingsSection::commands));
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->item(0)->text().toStdString(), SettingsTexts::builtIn);
    EXPECT_EQ(list->item(1)->text().toStdString(), "Left Half");
    EXPECT_FALSE(
        list->findItems(QStringLiteral("Top Half (Portrait)"), Qt::MatchExactly).isEmpty());
    EXPECT_EQ(list->item(list->count() - 2)->text().toStdString(), SettingsTexts::yourAreas);
    EXPECT_EQ(list->item(list->count() - 1)->text().toStdString(), SettingsTexts::noAreas);
    EXPECT_TRUE(shows(SettingsTexts::selectAnArea));
}

TEST_F(SettingsControls, anAreaIsMadeNamedAndDeleted) {
    open(SettingsSection::commands);
    named<QToolButton>(SettingsTexts::newArea)->click();
    EXPECT_EQ(selected().displayName(), "Custom Area");
    EXPECT_TRUE(shows(SettingsTexts::dragForCustom));
    auto* name = named<QLineEdit>(SettingsTexts::name);
    name->selectAll();
    for (const char letter : std::string("Mail")) {
        QKeyEvent event(QEvent::KeyPress, 0, {}, QString(QLatin1Char(letter)));
        QApplication::sendEvent(name, &event);
    }
    EXPECT_EQ(selected().displayName(), "Custom Area") << "not before it is left";
    press(*name, Qt::Key_Return);
    EXPECT_EQ(selected().displayName(), "Mail");
    auto* list = named<QListWidget>(title(SettingsSection::commands));
    EXPECT_EQ(list->currentItem()->text().toStdString(), "Mail");
    named<QToolButton>(SettingsTexts::deleteThisArea)->click();
    EXPECT_EQ(stage.model().selected(), nullptr);
    EXPECT_TRUE(shows(SettingsTexts::selectAnArea));
    EXPECT_FALSE(named<QToolButton>(SettingsTexts::deleteThisArea)->isEnabled());
}

TEST_F(SettingsControls, aBlankNameIsRefused) {
    open(SettingsSection::commands);
    stage.model().addCustomArea();
    auto* name = named<QLineEdit>(SettingsTexts::name);
    name->selectAll();
    press(*name, Qt::Key_Backspace);
    press(*name, Qt::Key_Return);
    EXPECT_EQ(name->text().toStdString(), "Custom Area");
    EXPECT_EQ(selected().displayName(), "Custom Area");
}

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

TEST_F(SettingsControls, escapeIsRecordedAndRefusedAsABareKey) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    const auto before = selected().shortcut;
    auto* field = named<RecorderField>(SettingsTexts::shortcut);
    std::optional<Shortcut> recorded;
    const auto receiver = field->onRecord;
    field->onRecord = [&](const Shortcut& shortcut) {
        recorded = shortcut;
        receiver(shortcut);
    };
    named<QPushButton>(SettingsTexts::record)->click();
    press(*field, Qt::Key_Escape, {}, 53);
    EXPECT_EQ(recorded, (Shortcut{53, 0, true}));
    EXPECT_EQ(selected().shortcut, before);
    EXPECT_TRUE(shows(SettingsTexts::bareKey));
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
    named<QPushButton>(SettingsTexts::record)->click();
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
    named<QPushButton>(SettingsTexts::record)->click();
    ASSERT_TRUE(field->isRecording());
    named<QListWidget>(title(SettingsSection::commands))->setFocus();
    EXPECT_FALSE(field->isRecording());
    EXPECT_EQ(commandChanges, 0);
}

TEST_F(SettingsControls, closingTheWindowEndsRecording) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    auto* field = named<RecorderField>(SettingsTexts::shortcut);
    named<QPushButton>(SettingsTexts::record)->click();
    stage.window().close();
    EXPECT_FALSE(field->isRecording());
}

TEST_F(SettingsControls, aTakenShortcutIsNamedWithItsHolder) {
    open(SettingsSection::commands);
    const SnapCommand holder = stage.model().commands()[1];
    stage.model().select(stage.model().commands()[0].id);
    auto* field = named<RecorderField>(SettingsTexts::shortcut);
    named<QPushButton>(SettingsTexts::record)->click();
    press(*field, Qt::Key_Right, Qt::ControlModifier | Qt::AltModifier, 124);
    EXPECT_TRUE(shows("Already used by " + holder.displayName()));
    EXPECT_EQ(commandChanges, 0);
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

TEST_F(SettingsControls, aShortcutIsSwitchedOffAndRemoved) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    named<ToggleSwitch>(SettingsTexts::shortcutOn)->click();
    EXPECT_FALSE(selected().shortcut->enabled);
    named<QPushButton>(SettingsTexts::removeShortcut)->click();
    EXPECT_EQ(selected().shortcut, std::nullopt);
    EXPECT_FALSE(named<QPushButton>(SettingsTexts::removeShortcut)->isVisible());
}

TEST_F(SettingsControls, draggingAcrossTheGridEditsOnce) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    QApplication::processEvents();
    auto* grid = all<GridEditorView>().at(0);
    ASSERT_NE(grid, nullptr);
    mouse(*grid, QEvent::MouseButtonPress, middleOf(*grid, {2, 3}, Axis::horizontal));
    mouse(*grid, QEvent::MouseMove, middleOf(*grid, {5, 5}, Axis::horizontal));
    mouse(*grid, QEvent::MouseMove, middleOf(*grid, {7, 8}, Axis::horizontal));
    EXPECT_EQ(commandChanges, 0);
    EXPECT_NE(grid->accessibleName().indexOf(QStringLiteral("column 3, row 4")), -1);
    mouse(*grid, QEvent::MouseButtonRelease, middleOf(*grid, {7, 8}, Axis::horizontal));
    EXPECT_EQ(commandChanges, 1);
    EXPECT_EQ(selected().targetSegments, (std::vector<Segment>{{2, 3, 6, 6}}));
    named<QPushButton>(SettingsTexts::restoreDefaultArea)->click();
    EXPECT_EQ(selected().targetSegments, (std::vector<Segment>{{0, 0, 12, 12}}));
}

TEST_F(SettingsControls, aClickThatSlipsPaintsNothing) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    QApplication::processEvents();
    auto* grid = all<GridEditorView>().at(0);
    const QPointF at = middleOf(*grid, {2, 3}, Axis::horizontal);
    mouse(*grid, QEvent::MouseButtonPress, at);
    mouse(*grid, QEvent::MouseMove, at + QPointF(2, 2));
    mouse(*grid, QEvent::MouseButtonRelease, at + QPointF(2, 2));
    EXPECT_EQ(commandChanges, 0);
}

TEST_F(SettingsControls, aDragFromOutsideTheGridStartsAtItsEdge) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    QApplication::processEvents();
    auto* grid = all<GridEditorView>().at(0);
    mouse(*grid, QEvent::MouseButtonPress, {0.5, 0.5});
    mouse(*grid, QEvent::MouseMove, middleOf(*grid, {1, 1}, Axis::horizontal));
    mouse(*grid, QEvent::MouseButtonRelease, middleOf(*grid, {1, 1}, Axis::horizontal));
    EXPECT_EQ(selected().targetSegments, (std::vector<Segment>{{0, 0, 2, 2}}));
}

TEST_F(SettingsControls, arrowKeysMoveAndResizeTheArea) {
    open(SettingsSection::commands);
    stage.model().addCustomArea();
    commandChanges = 0;
    auto* grid = all<GridEditorView>().at(0);
    press(*grid, Qt::Key_Left);
    press(*grid, Qt::Key_Down);
    EXPECT_EQ(selected().targetSegments, (std::vector<Segment>{{5, 4, 12, 6}}));
    press(*grid, Qt::Key_Right, Qt::ShiftModifier);
    press(*grid, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(selected().targetSegments, (std::vector<Segment>{{5, 4, 13, 5}}));
    EXPECT_EQ(commandChanges, 4);
    for (int i = 0; i < 30; ++i) {
        press(*grid, Qt::Key_Left);
    }
    EXPECT_EQ(selected().targetSegments, (std::vector<Segment>{{0, 4, 13, 5}}));
    EXPECT_EQ(commandChanges, 9) << "at the edge there is nothing to edit";
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

TEST_F(SettingsControls, everyControlHasANameForAScreenReader) {
    for (const SettingsSection section : settingsSections) {
        open(section);
        stage.model().select(stage.model().commands()[0].id);
        for (QWidget* widget : stage.window().findChildren<QWidget*>()) {
            if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus ||
                widget->inherits("QScrollBar") || widget->inherits("QScrollArea")) {
                continue;
            }
            const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(widget);
            ASSERT_NE(seen, nullptr);
            EXPECT_FALSE(seen->text(QAccessible::Name).isEmpty())
                << widget->metaObject()->className() << " in " << rawValue(section);
        }
    }
}

TEST_F(SettingsControls, theGridIsOneGraphicAndTheRecorderAButton) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    auto* grid = QAccessible::queryAccessibleInterface(all<GridEditorView>().at(0));
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(grid->role(), QAccessible::Graphic);
    EXPECT_EQ(grid->childCount(), 0);
    EXPECT_EQ(grid->text(QAccessible::Name).toStdString(), GridEditorLayout::label(selected()));
    auto* field = all<RecorderField>().at(0);
    auto* recorder = QAccessible::queryAccessibleInterface(field);
    ASSERT_NE(recorder, nullptr);
    EXPECT_EQ(recorder->role(), QAccessible::Button);
    recorder->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(field->isRecording());
}

TEST_F(SettingsControls, theTabKeyReachesEveryControlButNotTheRecorder) {
    open(SettingsSection::commands);
    stage.model().addCustomArea();
    QApplication::processEvents();
    std::vector<QWidget*> reached;
    QWidget* widget = stage.window().nextInFocusChain();
    while (widget != &stage.window()) {
        if (widget->isVisible() && widget->isEnabled() &&
            (widget->focusPolicy() & Qt::TabFocus) != 0) {
            reached.push_back(widget);
        }
        widget = widget->nextInFocusChain();
    }
    const auto reaches = [&](QWidget* wanted) {
        return std::find(reached.begin(), reached.end(), wanted) != reached.end();
    };
    EXPECT_TRUE(reaches(named<QListWidget>(SettingsTexts::sidebar)));
    EXPECT_TRUE(reaches(named<QListWidget>(title(SettingsSection::commands))));
    EXPECT_TRUE(reaches(named<QToolButton>(SettingsTexts::newArea)));
    EXPECT_TRUE(reaches(named<QLineEdit>(SettingsTexts::name)));
    EXPECT_TRUE(reaches(named<QPushButton>(SettingsTexts::record)));
    EXPECT_TRUE(reaches(all<GridEditorView>().at(0)));
    EXPECT_TRUE(reaches(named<QPushButton>(SettingsTexts::deleteArea)));
    EXPECT_FALSE(reaches(all<RecorderField>().at(0))) << "it would record the Tab key";
}

TEST_F(SettingsControls, eachPageHasALetterOfItsOwnForEachControl) {
    stage.model().select(stage.model().commands()[0].id);
    for (const SettingsSection section : settingsSections) {
        open(section);
        std::vector<QString> texts;
        for (const QWidget* widget : stage.window().findChildren<QWidget*>()) {
            const auto* label = qobject_cast<const QLabel*>(widget);
            const auto* button = qobject_cast<const QPushButton*>(widget);
            if (widget->isVisible() && (button || (label && label->buddy()))) {
                texts.push_back(button ? button->text() : label->text());
            }
        }
        std::set<QChar> letters;
        for (const QString& text : texts) {
            const QKeySequence keys = QKeySequence::mnemonic(text);
            EXPECT_FALSE(keys.isEmpty()) << text.toStdString() << " in " << rawValue(section);
            EXPECT_TRUE(letters.insert(keys.toString().back()).second)
                << text.toStdString() << " in " << rawValue(section);
        }
        EXPECT_FALSE(texts.empty());
    }
}

TEST_F(SettingsControls, altShowsTheLinesBelowTheLetters) {
    QWidget& label = *stage.window().findChildren<QLabel*>().first();
    const auto areShown = [&] {
        return label.style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, &label) != 0;
    };
    EXPECT_FALSE(areShown());
    press(stage.window(), Qt::Key_Alt, Qt::AltModifier);
    EXPECT_TRUE(areShown());
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Alt, {});
    QApplication::sendEvent(&stage.window(), &release);
    EXPECT_FALSE(areShown());
    press(stage.window(), Qt::Key_Alt, Qt::AltModifier);
    stage.window().close();
    EXPECT_FALSE(areShown()) << "the release goes to another window then";
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

TEST_F(SettingsControls, aNameThatIsBeingTypedIsTakenOverWhenTheWindowCloses) {
    open(SettingsSection::commands);
    stage.model().addCustomArea();
    auto* name = named<QLineEdit>(SettingsTexts::name);
    name->setFocus();
    name->selectAll();
    QKeyEvent letter(QEvent::KeyPress, 0, {}, QStringLiteral("M"));
    QApplication::sendEvent(name, &letter);
    stage.window().close();
    EXPECT_EQ(selected().displayName(), "M");
}

TEST_F(SettingsControls, textFieldsHaveTheUsualKeys) {
    open(SettingsSection::commands);
    stage.model().addCustomArea();
    auto* name = named<QLineEdit>(SettingsTexts::name);
    name->setFocus();
    press(*name, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(name->selectedText().toStdString(), "Custom Area");
    press(*name, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "Custom Area");
    press(*name, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(name->text().toStdString(), "");
    press(*name, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(name->text().toStdString(), "Custom Area");
    press(*name, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(name->text().toStdString(), "");
    press(*name, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(name->text().toStdString(), "Custom Area");
}

TEST_F(SettingsControls, arrowKeysGoThroughBothGroupsOfTheList) {
    open(SettingsSection::commands);
    stage.model().addCustomArea();
    const std::vector<SnapCommand> builtIn = stage.model().areas(false);
    stage.model().select(builtIn.back().id);
    auto* list = named<QListWidget>(title(SettingsSection::commands));
    list->setFocus();
    press(*list, Qt::Key_Down);
    EXPECT_TRUE(selected().isCustom()) << "the heading in between cannot be selected";
    press(*list, Qt::Key_Up);
    EXPECT_EQ(selected().id, builtIn.back().id);
    press(*list, Qt::Key_Home);
    EXPECT_EQ(selected().id, builtIn.front().id);
    press(*list, Qt::Key_Up);
    EXPECT_EQ(selected().id, builtIn.front().id);
}

TEST_F(SettingsControls, switchingTheTilingOffAsksFirst) {
    click("Turn It Off…");
    auto* question = stage.window().findChild<QMessageBox*>();
    ASSERT_NE(question, nullptr);
    EXPECT_EQ(question->text().toStdString(), TipTexts::switchOffQuestion);
    EXPECT_EQ(question->informativeText().toStdString(), TipTexts::switchOffDetails);
    EXPECT_TRUE(stage.tiling.isOn) << "nothing is done unasked";
    click("Cancel");
    EXPECT_TRUE(stage.tiling.isOn);
    click("Turn It Off…");
    click("Turn Off");
    EXPECT_FALSE(stage.tiling.isOn);
    stage.desktop().advance(1.6);
    EXPECT_TRUE(shows(TipTexts::tilingIsOff.text));
}

TEST_F(SettingsControls, theTipSaysWhenTheDesktopDoesNotObey) {
    stage.tiling.obeys = false;
    click("Open Desktop & Dock Settings…");
    EXPECT_TRUE(shows(TipTexts::openingFailed));
    click("Turn It Off…");
    click("Turn Off");
    EXPECT_TRUE(shows(TipTexts::switchOffFailed));
    EXPECT_FALSE(shows(TipTexts::openingFailed));
    stage.desktop().advance(1.6);
    EXPECT_TRUE(shows(TipTexts::switchOffFailed)) << "the tiling is still on";
    stage.tiling.obeys = true;
    click("Open Desktop & Dock Settings…");
    EXPECT_FALSE(shows(TipTexts::switchOffFailed)) << "this has worked";
    // It is gone with the tiling, and when the page is opened anew.
    stage.tiling.obeys = false;
    click("Open Desktop & Dock Settings…");
    stage.tiling.isOn = false;
    stage.desktop().advance(1.6);
    EXPECT_FALSE(shows(TipTexts::openingFailed));
    stage.tiling.isOn = true;
    stage.desktop().advance(1.6);
    click("Open Desktop & Dock Settings…");
    EXPECT_TRUE(shows(TipTexts::openingFailed));
    open(SettingsSection::oled);
    open(SettingsSection::general);
    EXPECT_FALSE(shows(TipTexts::openingFailed));
}

TEST_F(SettingsControls, aGridWithoutRoomDrawsNothing) {
    GridEditorView grid;
    grid.setCommand(stage.model().commands()[0]);
    grid.setMinimumSize(1, 1);
    grid.resize(23, 100);
    QImage picture(grid.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    grid.render(&picture, {}, {}, QWidget::RenderFlags());
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ASSERT_EQ(picture.pixel(x, y), 0U) << x << ", " << y;
        }
    }
}

TEST_F(SettingsControls, theCaptionStandsRightBelowTheGrid) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    QApplication::processEvents();
    const GridEditorView& grid = *all<GridEditorView>().at(0);
    for (const QLabel* label : stage.window().findChildren<QLabel*>()) {
        if (label->text() ==
            QString::fromUtf8("Drag across the grid to choose where this snaps.")) {
            const Rect last = GridEditorLayout::of({static_cast<double>(grid.width()),
                                                    static_cast<double>(grid.height())},
                                                   Axis::horizontal)
                                  .cell({23, 11});
            const int below = label->mapTo(&stage.window(), QPoint()).y() -
                              grid.mapTo(&stage.window(), QPoint()).y();
            EXPECT_LT(below - last.maxY(), 24);
            return;
        }
    }
    FAIL() << "there is no caption";
}

/// What the user sees of a text must be all of it: large text, and the smallest window.
class SettingsWithLargeText : public testing::TestWithParam<double> {};

TEST_P(SettingsWithLargeText, nothingIsCutOff) {
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPixelSize(static_cast<int>(QFontInfo(usual).pixelSize() * GetParam()));
    QApplication::setFont(large);
    {
        SettingsStage stage;
        stage.model().addCustomArea();
        stage.model().setRefusedShortcuts({*stage.model().selectedID()});
        stage.show();
        for (const SettingsSection section : settingsSections) {
            stage.model().setSection(section);
            stage.window().resize(QSize(860, 540) * AppFonts::pixelsPerPoint());
            QApplication::processEvents();
            for (QWidget* widget : stage.window().findChildren<QWidget*>()) {
                const auto* label = qobject_cast<QLabel*>(widget);
                const bool isButton = widget->inherits("QPushButton");
                if (!widget->isVisible() || (!isButton && (!label || label->text().isEmpty()))) {
                    continue;
                }
                const std::string text =
                    (isButton ? qobject_cast<QPushButton*>(widget)->text() : label->text())
                        .toStdString();
                if (isButton || !label->wordWrap()) {
                    EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << text;
                    EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << text;
                } else {
                    EXPECT_GE(widget->height(), label->heightForWidth(widget->width())) << text;
                }
            }
        }
    }
    QApplication::setFont(usual);
}

INSTANTIATE_TEST_SUITE_P(Sizes, SettingsWithLargeText, testing::Values(1.0, 1.5, 2.0));

}  // namespace
}  // namespace lumatile
