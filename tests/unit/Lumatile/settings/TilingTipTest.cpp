// The tip about the desktop's own tiling, and its buttons.

#include <QMessageBox>

#include <gtest/gtest.h>

#include "onboarding/TipTexts.h"
#include "tests/unit/Lumatile/settings/SettingsControls.h"

namespace lumatile {
namespace {

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

}  // namespace
}  // namespace lumatile
