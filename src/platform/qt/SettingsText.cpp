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

    SettingsText::Fault fault() {
        while (place_ < text_.size()) {
            if (!lineIsSafe()) {
                return SettingsText::Fault::serialised;
            }
            if (isFull()) {
                return SettingsText::Fault::tooManyValues;
            }
        }
        return SettingsText::Fault::none;
    }

    std::size_t keys() const { return keys_; }

private:
    bool lineIsSafe() {
        while (place_ < text_.size() && isSpace(text_[place_])) {
            ++place_;
        }
        if (place_ == text_.size()) {
            return true;
        }
        if (text_[place_] == ';') {
            skipToLineEnd();
            return true;
        }
        const bool isSection = text_[place_] == '[';
        bool inQuotes = false;
        bool inValue = false;
        std::size_t valueStart = 0;
        bool safe = true;
        const auto endValue = [&] {
            const std::string_view value = text_.substr(valueStart, place_ - valueStart);
            safe = safe && !(inValue && isSerialised(value));
            values_ += inValue ? 1 : 0;
        };
        for (; place_ < text_.size() && safe && !isFull(); ++place_) {
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
        values_ += inValue ? 0 : 1;
        sections_ += isSection ? 1 : 0;
        keys_ += inValue && !isSection ? 1 : 0;
        if (place_ < text_.size() && text_[place_] == ';') {
            skipToLineEnd();
        }
        return safe;
    }

    /// A line without a value counts as one, the toolkit takes it for a key.
    bool isFull() const {
        return values_ - sections_ > SettingsText::mostValues ||
               sections_ > SettingsText::mostValues;
    }

    void skipToLineEnd() {
        while (place_ < text_.size() && !isLineEnd(text_[place_])) {
            ++place_;
        }
    }

    std::string_view text_;
    std::size_t place_ = 0;
    std::size_t keys_ = 0;
    int values_ = 0;  // With the sections.
    int sections_ = 0;
};

/// By its beginning, since the longest file takes a while to look through.
bool isNoise(std::string_view text) {
    constexpr std::size_t beginningLength = 65536;
    const auto isControl = [](char c) {
        const auto code = static_cast<unsigned char>(c);
        constexpr unsigned char firstPrintable = 0x20;
        return code < firstPrintable && !isSpace(c);
    };
    const std::string_view start = text.substr(0, beginningLength);
    return std::any_of(start.begin(), start.end(), isControl) &&
           text.find_first_not_of('\0') != std::string_view::npos;
}

}  // namespace

SettingsText::Fault SettingsText::fault(std::string_view text) {
    return isNoise(text) ? Fault::noise : Walk(text).fault();
}

std::size_t SettingsText::keyCount(std::string_view text) {
    Walk walk(text);
    walk.fault();
    return walk.keys();
}

}  // namespace lumatile
