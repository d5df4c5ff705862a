// Screen readers, the keyboard alone, and large text.

#include <QAccessible>
#include <QApplication>
#include <QFontInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "Lumatile/settings/GridEditorView.h"
#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/settings/ShortcutRecorderView.h"
#include "tests/unit/Lumatile/settings/SettingsControls.h"

namespace lumatile {
namespace {

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

TEST_F(SettingsControls, theFrameOfTheRecorderIsAButtonThatBeginsTheRecording) {
    open(SettingsSection::commands);
    selectBuiltIn(0);
    auto* seen = QAccessible::queryAccessibleInterface(all<RecorderFrame>().at(0));
    ASSERT_NE(seen, nullptr);
    EXPECT_EQ(seen->role(), QAccessible::Button);
    EXPECT_EQ(seen->text(QAccessible::Name).toStdString(), "Record Shortcut");
    EXPECT_EQ(seen->text(QAccessible::Description),
              all<RecorderField>().at(0)->accessibleDescription());
    seen->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(all<RecorderField>().at(0)->isRecording());
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
    EXPECT_TRUE(reaches(&group(false)));
    EXPECT_TRUE(reaches(&group(true)));
    EXPECT_TRUE(reaches(named<QToolButton>(SettingsTexts::newArea)));
    EXPECT_TRUE(reaches(named<QLineEdit>(SettingsTexts::name)));
    EXPECT_TRUE(reaches(named<RecorderFrame>(SettingsTexts::recordShortcut)));
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
                // What draws its own text is told no size by a font.
                if (auto* field = dynamic_cast<RecorderField*>(widget);
                    field != nullptr && field->isVisible()) {
                    EXPECT_EQ(field->size(),
                              (QSizeF(180, 24) * AppFonts::pixelsPerPoint()).toSize());
                    const QWidget& page = *field->parentWidget()->parentWidget();
                    EXPECT_TRUE(
                        page.rect().contains(QRect(field->mapTo(&page, QPoint()), field->size())));
                }
            }
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
