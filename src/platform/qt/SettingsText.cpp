#include "platform/qt/SettingsText.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <string>

namespace lumatile {

namespace {

// The marks of values that the toolkit decodes; behind its other marks there is plain text.
constexpr std::array<std::u16string_view, 2> serialisedMarks = {u"@Variant(", u"@DateTime("};
constexpr std::size_t longestMark = 10;

bool isLineEnd(char c) { return c == '\n' || c == '\r'; }
bool isSpace(char c) { return c == ' ' || c == '\t' || isLineEnd(c); }

/// The number behind "\x" (hexadecimal) or a backslash (octal), which may have any length; the
/// toolkit keeps its last sixteen bits.
char16_t takeNumber(std::string_view& digits, unsigned base) {
    unsigned number = 0;
    for (; !digits.empty(); digits.remove_prefix(1)) {
        constexpr std::string_view values = "0123456789abcdef";
        const auto lower = static_cast<char>(std::tolower(static_cast<unsigned char>(digits[0])));
        const std::size_t value = values.find(lower);
        if (value >= base) {
            break;
        }
        number = (number * base + static_cast<unsigned>(value)) & 0xffffU;
    }
    return static_cast<char16_t>(number);
}

/// The first characters of a value as the toolkit reads them: without quotes, escapes resolved.
std::u16string beginning(std::string_view value) {
    std::u16string text;
    while (!value.empty() && text.size() < longestMark) {
        const char c = value[0];
        value.remove_prefix(1);
        if (c == '"' || (text.empty() && isSpace(c))) {
            continue;
        }
        if (c != '\\' || value.empty()) {
            text += static_cast<unsigned char>(c);
            continue;
        }
        const char escaped = value[0];
        if (escaped == 'x') {
            value.remove_prefix(1);
            text += takeNumber(value, 16);
        } else if (escaped >= '0' && escaped <= '7') {
            text += takeNumber(value, 8);
        } else {
            value.remove_prefix(1);
            if (isLineEnd(escaped)) {
                // The line goes on. Its end may be two characters.
                if (!value.empty() && isLineEnd(value[0]) && value[0] != escaped) {
                    value.remove_prefix(1);
                }
            } else {
                text += static_cast<unsigned char>(escaped);
            }
        }
    }
    return text;
}

/// @param value one value of the file, from its first character to its end
bool isSerialised(std::string_view value) {
    const std::u16string text = beginning(value);
    return std::any_of(serialisedMarks.begin(), serialisedMarks.end(),
                       [&](std::u16string_view mark) { return text.starts_with(mark); });
}

/// Goes through the text as the toolkit does: lines end where no quote is open, a semicolon ends
/// the line or makes it a comment, a backslash takes the next character along, and commas outside
/// quotes part a list.
class Walk {
public:
    explicit Walk(std::string_view text) : text_(text) {}

    bool isSafe() {
        while (place_ < text_.size()) {
            if (!lineIsSafe()) {
                return false;
            }
        }
        return true;
    }

private:
    bool lineIsSafe() {
        while (place_ < text_.size() && isSpace(text_[place_])) {
            ++place_;
        }
        if (place_ < text_.size() && text_[place_] == ';') {
            skipToLineEnd();
            return true;
        }
        bool inQuotes = false;
        bool inValue = false;
        std::size_t valueStart = 0;
        bool safe = true;
        const auto endValue = [&] {
            const std::string_view value = text_.substr(valueStart, place_ - valueStart);
            safe = safe && !(inValue && isSerialised(value));
        };
        for (; place_ < text_.size() && safe; ++place_) {
            const char c = text_[place_];
            if (c == '\\') {
                ++place_;
                // A line end may be two characters.
                if (place_ + 1 < text_.size() && isLineEnd(text_[place_]) &&
                    isLineEnd(text_[place_ + 1]) && text_[place_] != text_[place_ + 1]) {
                    ++place_;
                }
            } else if (c == '"') {
                inQuotes = !inQuotes;
            } else if (!inQuotes && (isLineEnd(c) || c == ';')) {
                break;
            } else if (!inQuotes && c == (inValue ? ',' : '=')) {
                endValue();
                inValue = true;
                valueStart = place_ + 1;
            }
        }
        place_ = std::min(place_, text_.size());
        endValue();
        if (place_ < text_.size() && text_[place_] == ';') {
            skipToLineEnd();
        }
        return safe;
    }

    void skipToLineEnd() {
        while (place_ < text_.size() && !isLineEnd(text_[place_])) {
            ++place_;
        }
    }

    std::string_view text_;
    std::size_t place_ = 0;
};

}  // namespace

bool SettingsText::isSafeToRead(std::string_view text) { return Walk(text).isSafe(); }

}  // namespace lumatile
