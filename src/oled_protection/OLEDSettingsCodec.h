#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "oled_protection/OLEDSettings.h"

/// The stored form of the settings: one JSON object, its keys named after the fields.
namespace lumatile::OLEDSettingsCodec {

/// Reads settings from text that anything may have written. A key that is absent, or null and so
/// without a value, takes its recommended value (an older version's text lacks some); unknown keys
/// are ignored. Absent as a whole when the text is no JSON object, when a key holds the wrong type
/// (a boolean is no number, nor the reverse), or when a number could not be worked with: not
/// finite, too large for the whole numbers that are derived from it, or a distance over 10 000 px
/// either sign, whose path would not fit memory.
std::optional<OLEDSettings> decode(std::string_view text);

/// Writes all nine keys in field order. A number that is not finite has no JSON form and is written
/// as null.
std::string encode(const OLEDSettings& settings);

}  // namespace lumatile::OLEDSettingsCodec
