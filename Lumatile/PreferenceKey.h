#pragma once

#include <string_view>

/// The fixed keys of the stored settings.
namespace lumatile::PreferenceKey {

inline constexpr std::string_view commands = "commands";          ///< Bytes: JSON, the commands.
inline constexpr std::string_view oledSettings = "oledSettings";  ///< Bytes: JSON, the settings.

}  // namespace lumatile::PreferenceKey
