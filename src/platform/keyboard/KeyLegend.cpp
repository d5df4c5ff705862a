#include "platform/keyboard/KeyLegend.h"

#include <xkbcommon/xkbcommon.h>

#include <array>
#include <cstddef>

namespace lumatile {

namespace {

/// Empty for a symbol that is no visible character.
std::string character(xkb_keysym_t symbol) {
    constexpr std::size_t longest = 8;
    std::array<char, longest> text{};
    const int size =
        xkb_keysym_to_utf8(xkb_keysym_to_upper(symbol), text.data(), text.size());  // With its end.
    if (size < 2 || static_cast<unsigned char>(text.front()) <= ' ' || text.front() == '\x7f') {
        return {};
    }
    return text.data();
}

}  // namespace

std::string keyLegend(const PhysicalKey& key, std::uint32_t keysym) {
    // The keys of the keypad have the characters of others.
    const std::string found = key.position.starts_with("KP") ? std::string() : character(keysym);
    return found.empty() ? std::string(key.name) : found;
}

}  // namespace lumatile
