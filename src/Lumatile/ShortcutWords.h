#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "commands/Shortcut.h"
#include "onboarding/KeyWords.h"

/// Shortcuts by the names that this desktop and its present layout give the keys.
namespace lumatile::ShortcutWords {

/// As `KeyCodes::legends` gives them.
using KeyLegends = std::map<std::uint32_t, std::string>;

/// The same by what `ShortcutFormatter` calls the character keys.
KeyWords::Legends byFormattedKey(const KeyLegends& legends);

/// "Ctrl+Alt+Left". A key that the formatter has no name for is named by its legend.
std::string of(const Shortcut& shortcut, const KeyLegends& legends);

}  // namespace lumatile::ShortcutWords
