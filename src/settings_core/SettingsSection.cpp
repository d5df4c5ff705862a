#include "settings_core/SettingsSection.h"

#include <cstddef>

#include "settings_core/SettingsCoreTexts.h"

namespace lumatile {

namespace {

struct Row {
    std::string_view rawValue;
    std::string_view title;
    std::string_view symbol;
};

constexpr std::array<Row, settingsSections.size()> rows{
    {{"general", SettingsCoreTexts::general, "gearshape"},
     {"commands", SettingsCoreTexts::snapAreas, "rectangle.split.2x2"},
     {"oled", SettingsCoreTexts::oledProtection, "display"},
     {"about", SettingsCoreTexts::about, "info.circle"}}};

const Row& row(SettingsSection section) { return rows.at(static_cast<std::size_t>(section)); }

}  // namespace

std::string_view rawValue(SettingsSection section) { return row(section).rawValue; }

std::optional<SettingsSection> settingsSectionFromRawValue(std::string_view text) {
    for (const SettingsSection section : settingsSections) {
        if (rawValue(section) == text) {
            return section;
        }
    }
    return std::nullopt;
}

std::string_view title(SettingsSection section) { return row(section).title; }

std::string_view symbol(SettingsSection section) { return row(section).symbol; }

}  // namespace lumatile
