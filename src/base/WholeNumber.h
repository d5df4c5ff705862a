#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

namespace lumatile {

/// A whole number in the smaller of the two types that hold it: unsigned unless negative.
using WholeNumber = std::variant<std::uint64_t, std::int64_t>;

/// The whole number that a JSON number with a fraction part or an exponent stands for: "12.0" and
/// "1.2e1" are 12. Decided on the digits, since a double has already lost the fraction of
/// "1.00000000000000000001".
/// @param number the text of one well-formed JSON number
/// @return absent for fractions and for numbers outside of 64 bits
std::optional<WholeNumber> wholeNumber(std::string_view number);

}  // namespace lumatile
