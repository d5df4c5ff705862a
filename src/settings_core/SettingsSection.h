#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace lumatile {

/// A page of the settings window, in the order of its sidebar.
enum class SettingsSection : std::uint8_t { general, commands, oled, about };

inline constexpr std::array settingsSections{SettingsSection::general, SettingsSection::commands,
                                             SettingsSection::oled, SettingsSection::about};

/// The name that other programs know it by.
std::string_view rawValue(SettingsSection section);

/// The section of a raw value; absent for any other text.
std::optional<SettingsSection> settingsSectionFromRawValue(std::string_view text);

/// As the sidebar shows it.
std::string_view title(SettingsSection section);

/// The name of its symbol.
std::string_view symbol(SettingsSection section);

}  // namespace lumatile
