#include "platform/freedesktop/tiling/GSettingsTiling.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "onboarding/SystemTiling.h"
#include "platform/freedesktop/glib/GLibHandles.h"

namespace lumatile::desktop {
namespace {

// The settings live in this process's memory: the program's main function says so.

struct Desktop {
    std::string name;
    std::string schema;
    std::string edgeKey;
    std::string topKey;
};

void set(const Desktop& desktop, const std::string& key, bool value) {
    const GObjectHandle<GSettings> settings(g_settings_new(desktop.schema.c_str()));
    ASSERT_NE(g_settings_set_boolean(settings.get(), key.c_str(), value ? TRUE : FALSE), 0);
}

class InstalledSchema : public testing::TestWithParam<Desktop> {};

TEST_P(InstalledSchema, theSwitchAnswersBothKeys) {
    GSettingsTiling tiling(GetParam().schema, GetParam().edgeKey, GetParam().topKey);
    ASSERT_TRUE(tiling.exists()) << GetParam().schema << " is not installed";
    for (const bool value : {true, false, true}) {
        set(GetParam(), GetParam().edgeKey, value);
        EXPECT_EQ(tiling.lookup(SystemTiling::edgeDragKey), value);
        EXPECT_EQ(tiling.lookup(SystemTiling::menuBarDragKey), value);
    }
    EXPECT_EQ(tiling.lookup("SomethingElse"), std::nullopt);
}

TEST_P(InstalledSchema, isSwitchedOff) {
    GSettingsTiling tiling(GetParam().schema, GetParam().edgeKey, GetParam().topKey);
    set(GetParam(), GetParam().edgeKey, true);
    EXPECT_TRUE(tiling.canSwitchOff());
    EXPECT_TRUE(tiling.switchOff());
    EXPECT_EQ(tiling.lookup(SystemTiling::edgeDragKey), false);
    EXPECT_EQ(tiling.lookup(SystemTiling::menuBarDragKey), false);
    const GObjectHandle<GSettings> settings(g_settings_new(GetParam().schema.c_str()));
    EXPECT_EQ(g_settings_get_boolean(settings.get(), GetParam().edgeKey.c_str()), FALSE);
}

INSTANTIATE_TEST_SUITE_P(
    Desktops, InstalledSchema,
    testing::Values(Desktop{"Mutter", "org.gnome.mutter", "edge-tiling", ""},
                    Desktop{"Metacity", "org.gnome.metacity", "edge-tiling", ""},
                    Desktop{"Muffin", "org.cinnamon.muffin", "edge-tiling", ""},
                    Desktop{"Marco", "org.mate.Marco.general", "allow-tiling", "allow-top-tiling"}),
    [](const auto& each) { return each.param.name; });

TEST(GSettingsTiling, theTopHasItsSwitchWhileTheOtherIsOn) {
    const Desktop marco{"Marco", "org.mate.Marco.general", "allow-tiling", "allow-top-tiling"};
    GSettingsTiling tiling(marco.schema, marco.edgeKey, marco.topKey);
    ASSERT_TRUE(tiling.exists());
    set(marco, "allow-tiling", true);
    set(marco, "allow-top-tiling", false);
    EXPECT_EQ(tiling.lookup(SystemTiling::edgeDragKey), true);
    EXPECT_EQ(tiling.lookup(SystemTiling::menuBarDragKey), false);
    set(marco, "allow-tiling", false);
    set(marco, "allow-top-tiling", true);
    EXPECT_EQ(tiling.lookup(SystemTiling::menuBarDragKey), false);
}

TEST(GSettingsTiling, aSchemaThatIsNotInstalledEndsNothing) {
    GSettingsTiling tiling("org.example.not-installed", "edge-tiling", "");
    EXPECT_FALSE(tiling.exists());
    EXPECT_EQ(tiling.lookup(SystemTiling::edgeDragKey), std::nullopt);
    EXPECT_FALSE(tiling.canSwitchOff());
    EXPECT_FALSE(tiling.switchOff());
}

TEST(GSettingsTiling, aKeyThatIsNotInTheSchemaOrNoBooleanEndsNothing) {
    EXPECT_FALSE(GSettingsTiling("org.gnome.metacity", "no-such-key", "").exists());
    EXPECT_FALSE(GSettingsTiling("org.gnome.metacity", "placement-mode", "").exists());
    // An older schema without the second key.
    GSettingsTiling tiling("org.gnome.metacity", "edge-tiling", "no-such-key");
    ASSERT_TRUE(tiling.exists());
    set({"", "org.gnome.metacity", "", ""}, "edge-tiling", true);
    EXPECT_EQ(tiling.lookup(SystemTiling::menuBarDragKey), true);
}

TEST(GSettingsTiling, aSchemaWithoutAPathIsNone) {
    EXPECT_FALSE(
        GSettingsTiling("org.gnome.desktop.notifications.application", "enable", "").exists());
}

}  // namespace
}  // namespace lumatile::desktop
