#include <cstdint>
#include <cstdlib>
#include <string>

#include "commands/SnapCommand.h"

namespace lumatile {

namespace {

constexpr std::uint64_t offsetBasis = 0xcbf29ce484222325ULL;
// The standard basis with its halves swapped: a second hash of the same text, independent enough to
// fill the other 64 bits.
constexpr std::uint64_t swappedOffsetBasis = 0x84222325cbf29ce4ULL;
constexpr std::uint64_t prime = 1099511628211ULL;

/// FNV-1a.
std::uint64_t hash(std::string_view text, std::uint64_t basis) {
    std::uint64_t result = basis;
    for (const char character : text) {
        result = (result ^ static_cast<std::uint8_t>(character)) * prime;
    }
    return result;
}

std::string hexadecimal(std::uint64_t value) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text(16, '0');
    for (auto place = text.rbegin(); place != text.rend(); ++place) {
        *place = digits[value & 0xFU];
        value >>= 4U;
    }
    return text;
}

}  // namespace

UUID SnapCommand::derivedId(std::string_view nameKey, Axis axis) {
    const std::string text = std::string(nameKey) + "|" + std::string(rawValue(axis));
    const std::string digits =
        hexadecimal(hash(text, offsetBasis)) + hexadecimal(hash(text, swappedOffsetBasis));
    // Two digits give way to the version and the variant, which make it a well-formed UUID.
    const auto id =
        UUID::parse(digits.substr(0, 8) + "-" + digits.substr(8, 4) + "-4" + digits.substr(13, 3) +
                    "-a" + digits.substr(17, 3) + "-" + digits.substr(20, 12));
    if (!id) {
        std::abort();
    }
    return *id;
}

}  // namespace lumatile
