// The settings window as it looks, drawn without any screen. The pictures are kept for whoever
// wants to see them.

#include <QApplication>
#include <QDir>
#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/unit/Lumatile/SettingsStage.h"

namespace lumatile {
namespace {

class SettingsPictures : public testing::Test {
protected:
    void save(const char* name) {
        QWidget& window = stage_.window();
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

}  // namespace
}  // namespace lumatile
