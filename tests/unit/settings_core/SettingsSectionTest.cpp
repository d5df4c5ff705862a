#include "settings_core/SettingsSection.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lumatile {
namespace {

TEST(SettingsSection, sidebarFromTopToBottom) {
    std::vector<std::string> seen;
    for (const SettingsSection section : settingsSections) {
        seen.push_back(std::string(rawValue(section)) + " | " + std::string(title(section)) +
                       " | " + std::string(symbol(section)));
    }
    EXPECT_EQ(seen,
              (std::vector<std::string>{
                  "general | General | gearshape", "commands | Snap Areas | rectangle.split.2x2",
                  "oled | OLED Protection | display", "about | About | info.circle"}));
}

TEST(SettingsSection, rawValuesLeadBack) {
    for (const SettingsSection section : settingsSections) {
        EXPECT_EQ(settingsSectionFromRawValue(rawValue(section)), section);
    }
}

TEST(SettingsSection, unknownRawValueGivesNone) {
    EXPECT_EQ(settingsSectionFromRawValue("General"), std::nullopt);
    EXPECT_EQ(settingsSectionFromRawValue(""), std::nullopt);
    EXPECT_EQ(settingsSectionFromRawValue("advanced"), std::nullopt);
}

}  // namespace
}  // namespace lumatile
