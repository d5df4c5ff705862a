// What every section says while the settings are not stored.

#include <gtest/gtest.h>

#include <string>

#include "tests/unit/Lumatile/settings/SettingsControls.h"

namespace lumatile {
namespace {

class PreferencesNotice : public SettingsControls {
protected:
    bool offersToSetAside() { return named<QPushButton>("Set Aside and Start Anew")->isVisible(); }

    SimulatedPreferences& preferences() { return stage.desktop().preferences; }
};

TEST_F(PreferencesNotice, everySectionSaysWhatIsNotStoredUntilItIs) {
    EXPECT_FALSE(offersToSetAside());
    preferences().setDiskFull(true);
    preferences().setBoolean("dragToSnapEnabled", false);
    ASSERT_TRUE(preferences().trouble());
    const std::string line = preferences().trouble()->line;
    for (const SettingsSection section : settingsSections) {
        open(section);
        EXPECT_TRUE(shows(line)) << static_cast<int>(section);
        EXPECT_FALSE(offersToSetAside()) << "there is nothing to be set aside";
    }
    preferences().setDiskFull(false);
    preferences().setBoolean("dragToSnapEnabled", true);
    QApplication::processEvents();
    EXPECT_FALSE(shows(line));
}

TEST_F(PreferencesNotice, theButtonSetsAsideWhatIsInTheWay) {
    const std::string line = "/home/lumatile.conf is a folder.";
    preferences().putInTheWay(line);
    QApplication::processEvents();
    EXPECT_TRUE(shows(line));
    preferences().setBoolean("dragToSnapEnabled", false);
    EXPECT_TRUE(preferences().disk().empty());
    click("Set Aside and Start Anew");
    EXPECT_FALSE(shows(line));
    EXPECT_FALSE(offersToSetAside());
    EXPECT_EQ(preferences().disk().at("dragToSnapEnabled"), StoredValue(false));
}

}  // namespace
}  // namespace lumatile
