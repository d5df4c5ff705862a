#pragma once

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include "Lumatile/settings/GridEditorView.h"
#include "Lumatile/settings/RecorderFrame.h"
#include "Lumatile/settings/SettingsTexts.h"
#include "tests/unit/Lumatile/settings/SettingsStage.h"

namespace lumatile {

/// The settings window as it stands open, and the ways in which a user works its controls.
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

    /// As the keyboard begins it.
    void beginRecording() {
        press(*named<RecorderFrame>(SettingsTexts::recordShortcut), Qt::Key_Space);
    }

    /// Where the rows of a group of areas are.
    QListWidget& group(bool custom) {
        return *named<QListWidget>(custom ? SettingsTexts::yourAreas : SettingsTexts::builtIn);
    }

    void selectBuiltIn(std::size_t index) {
        stage.model().select(stage.model().commands().at(index).id);
        QApplication::processEvents();
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

}  // namespace lumatile
