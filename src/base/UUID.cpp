#include "base/UUID.h"

#include <random>

namespace lumatile {

namespace {

constexpr std::size_t textLength = 36;

constexpr bool isHyphenPlace(std::size_t place) {
    return place == 8 || place == 13 || place == 18 || place == 23;
}

std::optional<std::uint8_t> hexDigit(char character) {
    if (character >= '0' && character <= '9') {
        return static_cast<std::uint8_t>(character - '0');
    }
    if (character >= 'a' && character <= 'f') {
        return static_cast<std::uint8_t>(character - 'a' + 10);
    }
    if (character >= 'A' && character <= 'F') {
        return static_cast<std::uint8_t>(character - 'A' + 10);
    }
    return std::nullopt;
}

std::string format(const UUID& uuid, std::string_view digits) {
    std::string text;
    text.reserve(textLength);
    for (const std::uint8_t byte : uuid.bytes) {
        if (isHyphenPlace(text.size())) {
            text += '-';
        }
        text += digits[byte >> 4U];
        text += digits[byte & 0xFU];
    }
    return text;
}

}  // namespace

UUID UUID::random() {
    std::random_device source;
    std::uniform_int_distribution<unsigned> byteValues(0, 255);
    UUID uuid;
    for (std::uint8_t& byte : uuid.bytes) {
        byte = static_cast<std::uint8_t>(byteValues(source));
    }
    // The marks of a random identifier: version 4 and variant 1.
    uuid.bytes[6] = static_cast<std::uint8_t>((uuid.bytes[6] & 0x0FU) | 0x40U);
    uuid.bytes[8] = static_cast<std::uint8_t>((uuid.bytes[8] & 0x3FU) | 0x80U);
    return uuid;
}

std::optional<UUID> UUID::parse(std::string_view text) {
    if (text.size() != textLength) {
        return std::nullopt;
    }
    UUID uuid;
    std::size_t digits = 0;
    for (std::size_t place = 0; place < textLength; ++place) {
        if (isHyphenPlace(place)) {
            if (text[place] != '-') {
                return std::nullopt;
            }
            continue;
        }
        const auto digit = hexDigit(text[place]);
        if (!digit) {
            return std::nullopt;
        }
        std::uint8_t& byte = uuid.bytes.at(digits / 2);
        byte = static_cast<std::uint8_t>((byte << 4U) | *digit);
        ++digits;
    }
    return uuid;
}

std::string UUID::text() const { return format(*this, "0123456789ABCDEF"); }

std::string UUID::lowercaseText() const { return format(*this, "0123456789abcdef"); }

}  // namespace lumatile

std::size_t std::hash<lumatile::UUID>::operator()(const lumatile::UUID& uuid) const noexcept {
    std::size_t seed = 0;
    for (const std::uint8_t byte : uuid.bytes) {
        seed = seed * 31 + byte;
    }
    return seed;
}
