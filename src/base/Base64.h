#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Arbitrary bytes as letters, digits, '+' and '/', three bytes to four characters, filled up with
/// '='.
namespace lumatile::Base64 {

std::string encode(std::string_view bytes);

/// @return absent for what `encode` does not write
std::optional<std::string> decode(std::string_view text);

}  // namespace lumatile::Base64
