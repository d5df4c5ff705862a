#pragma once

#include <optional>
#include <string>
#include <string_view>

/// How values are written in desktop entries.
namespace lumatile::DesktopEntryText {

/// A command line of one program without arguments, as the value of "Exec".
/// @return absent for a path that no command line can name: an empty one, or one with a line break,
///   a tab or another control character in it
std::optional<std::string> exec(std::string_view program);

/// The program that the value of an "Exec" key starts, its first word with quotes and escapes
/// undone.
/// @return absent where there is none, or the quotes do not close
std::optional<std::string> program(std::string_view exec);

/// "true" and "false", as the format has them; absent for anything else.
std::optional<bool> boolean(std::optional<std::string_view> value);

/// Whether a list ("a;b;c;") holds `item`.
bool listHolds(std::string_view list, std::string_view item);

}  // namespace lumatile::DesktopEntryText
