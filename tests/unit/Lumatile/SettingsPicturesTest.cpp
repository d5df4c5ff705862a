// The settings window as it looks, drawn without any screen. The pictures are kept for whoever
// wants to see them.

#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/unit/Lumatile/SettingsStage.h"

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

    SettingsStage stage_;
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
}

}  // namespace
}  // namespace lumatile
