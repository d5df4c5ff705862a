#pragma once

#include <cstdint>
#include <string>

#include "platform/keyboard/KeyTable.h"

namespace lumatile {

/// What is on a key in a layout: a character, letters in upper case, or else the key's English
/// name.
/// @param keysym what the key has without modifiers, as XKB numbers it; 0 where that is not known
std::string keyLegend(const PhysicalKey& key, std::uint32_t keysym);

}  // namespace lumatile
