#include "platform/x11/X11PlainText.h"

#include <cstddef>
#include <cstdint>

namespace lumatile {

namespace {

/// Length of the well-formed character at the start of `text`; 0 for anything else. Overlong forms,
/// surrogates and what lies above U+10FFFF are not well formed.
std::size_t characterLength(std::string_view text) {
    const auto byte = [&](std::size_t index) { return static_cast<std::uint8_t>(text[index]); };
    const auto continues = [&](std::size_t index, unsigned from, unsigned to) {
        return index < text.size() && byte(index) >= from && byte(index) <= to;
    };
    const unsigned first = byte(0);
    if (first < 0x80) {
        return first >= 0x20 && first != 0x7f ? 1 : 0;
    }
    if (first == 0xc2) {
        return continues(1, 0xa0, 0xbf) ? 2 : 0;  // Below are the C1 control characters.
    }
    if (first > 0xc2 && first < 0xe0) {
        return continues(1, 0x80, 0xbf) ? 2 : 0;
    }
    if (first >= 0xe0 && first < 0xf0) {
        const unsigned from = first == 0xe0 ? 0xa0 : 0x80;
        const unsigned to = first == 0xed ? 0x9f : 0xbf;
        return continues(1, from, to) && continues(2, 0x80, 0xbf) ? 3 : 0;
    }
    if (first >= 0xf0 && first < 0xf5) {
        const unsigned from = first == 0xf0 ? 0x90 : 0x80;
        const unsigned to = first == 0xf4 ? 0x8f : 0xbf;
        return continues(1, from, to) && continues(2, 0x80, 0xbf) && continues(3, 0x80, 0xbf) ? 4
                                                                                              : 0;
    }
    return 0;
}

}  // namespace

std::optional<std::string> X11PlainText::of(std::string_view bytes) {
    if (bytes.empty() || bytes.size() > longest) {
        return std::nullopt;
    }
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::size_t length = characterLength(rest);
        if (length == 0) {
            return std::nullopt;
        }
        rest.remove_prefix(length);
    }
    return std::string(bytes);
}

}  // namespace lumatile
