#include "base/NameText.h"

#include <algorithm>
#include <array>

#include <utf8proc.h>

namespace lumatile {

namespace {

/// One code point of a text; a byte that belongs to none counts as one of its own.
struct CodePoint {
    utf8proc_int32_t value = -1;  ///< Negative for a stray byte.
    std::size_t bytes = 1;
};

CodePoint codePointAt(std::string_view text, std::size_t place) {
    // The sequence is at most four bytes long; a bounded view also keeps the length in range.
    const std::string_view rest = text.substr(place, 4);
    std::array<utf8proc_uint8_t, 4> bytes{};
    for (std::size_t i = 0; i < bytes.size() && i < rest.size(); ++i) {
        bytes.at(i) = static_cast<utf8proc_uint8_t>(rest[i]);
    }
    CodePoint point;
    const utf8proc_ssize_t length =
        utf8proc_iterate(bytes.data(), static_cast<utf8proc_ssize_t>(rest.size()), &point.value);
    if (length > 0) {
        point.bytes = static_cast<std::size_t>(length);
    }
    return point;
}

void append(std::string& text, utf8proc_int32_t codePoint) {
    std::array<utf8proc_uint8_t, 4> bytes{};
    const utf8proc_ssize_t length = utf8proc_encode_char(codePoint, bytes.data());
    for (std::size_t i = 0; i < static_cast<std::size_t>(length); ++i) {
        text += static_cast<char>(bytes.at(i));
    }
}

bool isWhiteSpaceOrLineBreak(utf8proc_int32_t value) {
    // Tab, line feed, vertical tab, form feed and carriage return; next line; line and paragraph
    // separator.
    return (value >= 0x09 && value <= 0x0D) || value == 0x85 || value == 0x2028 ||
           value == 0x2029 || utf8proc_category(value) == UTF8PROC_CATEGORY_ZS;
}

}  // namespace

bool NameText::isUTF8(std::string_view text) {
    std::size_t place = 0;
    while (place < text.size()) {
        const CodePoint point = codePointAt(text, place);
        if (point.value < 0) {
            return false;
        }
        place += point.bytes;
    }
    return true;
}

std::string_view NameText::trimmed(std::string_view text) {
    std::size_t begin = text.size();
    std::size_t end = 0;
    std::size_t place = 0;
    while (place < text.size()) {
        const CodePoint point = codePointAt(text, place);
        const std::size_t next = place + point.bytes;
        if (!isWhiteSpaceOrLineBreak(point.value)) {
            begin = std::min(begin, place);
            end = next;
        }
        place = next;
    }
    return begin < end ? text.substr(begin, end - begin) : std::string_view{};
}

std::string_view NameText::prefix(std::string_view text, std::size_t maxCharacters,
                                  std::size_t maxBytes) {
    if (maxCharacters == 0) {
        return {};
    }
    // Where the last whole character that still fits ends.
    std::size_t end = 0;
    std::size_t characters = 0;
    utf8proc_int32_t previous = 0;
    utf8proc_int32_t breakState = 0;
    std::size_t place = 0;
    while (place < text.size()) {
        const CodePoint point = codePointAt(text, place);
        const bool startsCharacter =
            place > 0 && utf8proc_grapheme_break_stateful(previous, point.value, &breakState);
        if (startsCharacter) {
            ++characters;
            end = place;
            if (characters == maxCharacters) {
                return text.substr(0, end);
            }
        }
        place += point.bytes;
        if (place > maxBytes) {
            return text.substr(0, end);
        }
        previous = point.value;
    }
    return text;
}

std::string NameText::title(std::string_view key) {
    std::string result;
    std::size_t place = 0;
    while (place < key.size()) {
        const CodePoint point = codePointAt(key, place);
        if (point.value < 0) {
            result += key[place];
        } else if (place == 0) {
            append(result, utf8proc_toupper(point.value));
        } else {
            if (utf8proc_isupper(point.value) != 0) {
                result += ' ';
            }
            append(result, point.value);
        }
        place += point.bytes;
    }
    return result;
}

}  // namespace lumatile
