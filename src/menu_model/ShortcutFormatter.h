#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Shortcuts as the interface writes them. UTF-8. Key codes and modifier masks are those of
/// `Shortcut`.
namespace lumatile::ShortcutFormatter {

/// The name of function keys, keypad keys and every other code that has none.
inline constexpr std::string_view unknownKey = "?";

/// What stands on the key of a US keyboard, letters in upper case, or the glyph of a special key.
std::string_view keyName(std::uint32_t keyCode);

/// The glyphs of the modifiers, always in the order control, option, shift, command, then the key
/// name; nothing in between. Unknown modifier bits are ignored.
std::string format(std::uint32_t keyCode, std::uint32_t modifiers);

/// The key name in lower case, as menu items take it.
std::string keyEquivalent(std::uint32_t keyCode);

}  // namespace lumatile::ShortcutFormatter
