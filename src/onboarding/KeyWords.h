#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

/// Shortcuts as the desktops of this host write them.
namespace lumatile::KeyWords {

/// What is on the keys, by what a US keyboard has there.
using Legends = std::map<std::string, std::string, std::less<>>;

/// Whether a glyph of a modifier or of a special key is in it.
bool occurIn(std::string_view text);

/// `text` with every shortcut that is written in glyphs written by names: "⌃⌥←" becomes
/// "Ctrl+Alt+Left", "⌃⌥ ← → ↑" becomes "Ctrl+Alt+Left, Right or Up".
std::string written(std::string_view text, const Legends& legends);

}  // namespace lumatile::KeyWords
