// The settings window as it looks, drawn without any screen. The pictures are kept for whoever
// wants to see them.

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFontInfo>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "Lumatile/settings/AboutPanel.h"
#include "Lumatile/settings/GridEditorView.h"
#include "Lumatile/settings/NoticeWindow.h"
#include "Lumatile/settings/RecorderFrame.h"
#include "Lumatile/settings/ShortcutRecorderView.h"
#include "Lumatile/widgets/ViewText.h"
#include "tests/unit/Lumatile/settings/SettingsStage.h"

namespace lumatile {
namespace {

class SettingsPictures : public testing::Test {
protected:
    void save(const char* name) { save(stage_.window(), name); }

    static void save(QWidget& window, const char* name) {
        QApplication::processEvents();
        const QPixmap picture = window.grab();
        ASSERT_FALSE(picture.isNull());
        ASSERT_TRUE(QDir().mkpath(QStringLiteral(LUMATILE_PICTURES)));
        ASSERT_TRUE(picture.save(QStringLiteral(LUMATILE_PICTURES "/%1.png").arg(name)));
    }

    SettingsStage stage_{
        {"A held mouse button is known here only while a window is moved or resized. While you "
         "hold "
         "one still for something else, windows may be shifted by a pixel."}};
};

TEST_F(SettingsPictures, everySection) {
    stage_.show();
    stage_.window().resize(920, 600);
    for (const SettingsSection section : settingsSections) {
        stage_.model().setSection(section);
        if (section == SettingsSection::commands) {
            save("settings-commands-none");
            stage_.model().select(stage_.model().commands().front().id);
        }
        save(("settings-" + std::string(rawValue(section))).c_str());
    }
    stage_.model().setSection(SettingsSection::commands);
    stage_.model().addCustomArea();
    stage_.model().record({53, 0, true});
    save("settings-custom-area");
}

TEST_F(SettingsPictures, theSmallestWindow) {
    stage_.show();
    stage_.window().resize(stage_.window().minimumSize());
    for (const SettingsSection section : settingsSections) {
        stage_.model().setSection(section);
        const std::string name = "settings-" + std::string(rawValue(section)) + "-smallest";
        save(name.c_str());
        // And how the page ends.
        for (QScrollArea* area : stage_.window().findChildren<QScrollArea*>()) {
            if (area->isVisible()) {
                area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
                EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0) << name;
                save((name + "-end").c_str());
            }
        }
    }
}

TEST_F(SettingsPictures, whereTheKeyboardIs) {
    stage_.show();
    stage_.window().resize(stage_.window().minimumSize());
    stage_.model().setSection(SettingsSection::commands);
    stage_.model().select(stage_.model().commands()[8].id);
    QApplication::processEvents();
    int saved = 0;
    for (QWidget* widget : stage_.window().findChildren<QWidget*>()) {
        if (!widget->isVisible()) {
            continue;
        }
        if (widget->objectName() == QLatin1String("areas")) {
            widget->setFocus();
            save(("areas-focus-list-" + std::to_string(++saved)).c_str());
        } else if (dynamic_cast<RecorderFrame*>(widget) != nullptr) {
            widget->setFocus();
            save("areas-focus-frame");
        } else if (dynamic_cast<RecorderField*>(widget) != nullptr) {
            widget->setFocus();
            save("areas-recording");
        } else if (dynamic_cast<GridEditorView*>(widget) != nullptr) {
            widget->setFocus();
            save("areas-focus-grid");
        }
    }
    EXPECT_EQ(saved, 2);
}

/// A light and a dark desktop give the same picture.
TEST_F(SettingsPictures, theDesktopsOwnColoursDoNotShow) {
    stage_.show();
    stage_.model().setSection(SettingsSection::commands);
    stage_.model().addCustomArea();
    const QPalette usual = QApplication::palette();
    QList<QImage> pictures;
    for (const QColor& ground : {QColor(Qt::white), QColor(Qt::black)}) {
        QApplication::setPalette(QPalette(ground));
        QApplication::processEvents();
        pictures.append(stage_.window().grab().toImage());
    }
    QApplication::setPalette(usual);
    EXPECT_TRUE(pictures[0] == pictures[1]);
}

TEST_F(SettingsPictures, whatOpensFromThem) {
    stage_.show();
    stage_.window().resize(920, 600);
    QKeyEvent alt(QEvent::KeyPress, Qt::Key_Alt, Qt::AltModifier);
    QApplication::sendEvent(&stage_.window(), &alt);
    save("settings-letters");
    auto* menu = stage_.window().findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    menu->popup({0, 0});
    save(*menu, "settings-run-menu");
    menu->close();
    for (QPushButton* button : stage_.window().findChildren<QPushButton*>()) {
        if (button->text().contains(QLatin1String("urn It Off"))) {
            button->click();
        }
    }
    auto* question = stage_.window().findChild<QMessageBox*>();
    ASSERT_NE(question, nullptr);
    save(*question, "settings-tiling-question");
    question->close();
    stage_.model().setSection(SettingsSection::oled);
    auto* choices = stage_.window().findChild<QComboBox*>();
    ASSERT_NE(choices, nullptr);
    choices->showPopup();
    save(*choices->view()->window(), "settings-choices");
    choices->hidePopup();

    NoticeWindow notices;
    notices.show({"Lumatile 2.0 is available", "You have version 1.2.3.", "Show Updates"}, [] {});
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->inherits("QDialog")) {
            save(*window, "notice");
        }
    }
    AboutPanel about("1.2.3", [](std::string_view text) { return viewText(text); }, {});
    about.show();
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowTitle() == QLatin1String("About Lumatile")) {
            save(*window, "about");
        }
    }
}

/// Light letters on a dark ground, whatever the desktop's own colours are.
TEST_F(SettingsPictures, everythingThatOpensIsDark) {
    stage_.show();
    for (QPushButton* button : stage_.window().findChildren<QPushButton*>()) {
        if (button->text().contains(QLatin1String("urn It Off"))) {
            button->click();
        }
    }
    auto* question = stage_.window().findChild<QMessageBox*>();
    auto* menu = stage_.window().findChild<QMenu*>();
    ASSERT_NE(question, nullptr);
    ASSERT_NE(menu, nullptr);
    emit menu->aboutToShow();
    auto* choices = stage_.window().findChild<QComboBox*>();
    ASSERT_NE(choices, nullptr);
    choices->showPopup();
    // The last choice of the first box leads to a folder.
    emit choices->activated(choices->count() - 1);
    auto* folders = stage_.window().findChild<QFileDialog*>();
    ASSERT_NE(folders, nullptr);
    save(*folders, "settings-folder");
    for (QWidget* window : {static_cast<QWidget*>(question), static_cast<QWidget*>(menu),
                            choices->view()->window(), static_cast<QWidget*>(folders)}) {
        QApplication::processEvents();
        const QImage picture = window->grab().toImage();
        EXPECT_LT(picture.pixelColor(picture.width() / 2, 3).lightness(), 80);
        EXPECT_EQ(QFontInfo(window->font()).family(), "Hanken Grotesk");
    }
}

}  // namespace
}  // namespace lumatile
