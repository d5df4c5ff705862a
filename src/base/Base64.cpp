#include "base/Base64.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace lumatile::Base64 {

namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t groupBytes = 3;
constexpr std::size_t groupLetters = 4;
constexpr unsigned byteBits = 8;
constexpr unsigned letterBits = 6;
constexpr std::uint32_t byteMask = 0xff;
constexpr std::uint32_t letterMask = 0x3f;

constexpr unsigned char noDigit = 0xff;

/// The place of every byte in the alphabet.
constexpr auto digits = [] {
    std::array<unsigned char, std::size_t{1} << byteBits> table{};
    table.fill(noDigit);
    for (std::size_t index = 0; index < alphabet.size(); ++index) {
        table[static_cast<unsigned char>(alphabet[index])] = static_cast<unsigned char>(index);
    }
    return table;
}();

}  // namespace

std::string encode(std::string_view bytes) {
    std::string text;
    text.reserve((bytes.size() + groupBytes - 1) / groupBytes * groupLetters);
    for (std::size_t start = 0; start < bytes.size(); start += groupBytes) {
        const std::string_view group = bytes.substr(start, groupBytes);
        std::uint32_t bits = 0;
        for (std::size_t index = 0; index < groupBytes; ++index) {
            const auto byte = index < group.size() ? static_cast<unsigned char>(group[index]) : 0U;
            bits = bits << byteBits | byte;
        }
        for (std::size_t index = 0; index < groupLetters; ++index) {
            const auto shift = letterBits * static_cast<unsigned>(groupLetters - 1 - index);
            text.push_back(index <= group.size() ? alphabet[bits >> shift & letterMask] : '=');
        }
    }
    return text;
}

std::optional<std::string> decode(std::string_view text) {
    if (text.size() % groupLetters != 0) {
        return std::nullopt;
    }
    std::string bytes;
    bytes.reserve(text.size() / groupLetters * groupBytes);
    for (std::size_t start = 0; start < text.size(); start += groupLetters) {
        std::string_view group = text.substr(start, groupLetters);
        while (group.size() > 2 && group.back() == '=' && start + groupLetters == text.size()) {
            group.remove_suffix(1);
        }
        std::uint32_t bits = 0;
        for (std::size_t index = 0; index < groupLetters; ++index) {
            const unsigned digit =
                index < group.size() ? digits[static_cast<unsigned char>(group[index])] : 0;
            if (digit == noDigit) {
                return std::nullopt;
            }
            bits = bits << letterBits | digit;
        }
        for (std::size_t index = 0; index + 1 < group.size(); ++index) {
            const auto shift = byteBits * static_cast<unsigned>(groupBytes - 1 - index);
            bytes.push_back(
                static_cast<char>(static_cast<unsigned char>(bits >> shift & byteMask)));
        }
    }
    // Bits that no byte holds must be zero; otherwise two texts would mean the same.
    if (encode(bytes) != text) {
        return std::nullopt;
    }
    return bytes;
}

}  // namespace lumatile::Base64
