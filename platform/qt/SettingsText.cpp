#include "platform/qt/SettingsText.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace lumatile {

namespace {

// A level of nesting takes eight bytes; some ten thousand of them end the stack.
constexpr std::size_t longestSerialised = 4096;

// Values that are plain text behind their mark, and a text that begins with the sign itself.
constexpr std::array<std::string_view, 7> plainMarks = {
    "@ByteArray(", "@String(", "@Size(", "@Point(", "@Rect(", "@Invalid(", "@@"};

bool isLineEnd(char c) { return c == '\n' || c == '\r'; }
bool isSpace(char c) { return c == ' ' || c == '\t' || isLineEnd(c); }

/// @param value one value of the file, from its first character to its end
bool mayBeSerialised(std::string_view value) {
    // Quotes, blanks and line ends that are taken back do not count.
    while (!value.empty() && (isSpace(value[0]) || value[0] == '"' ||
                              (value[0] == '\\' && value.size() > 1 && isLineEnd(value[1])))) {
        value.remove_prefix(1);
    }
    if (value.starts_with('@')) {
        return std::none_of(plainMarks.begin(), plainMarks.end(),
                            [&](std::string_view mark) { return value.starts_with(mark); });
    }
    // The sign may be written by its number.
    constexpr std::string_view numberMarks = "x01234567";
    return value.size() > 1 && value[0] == '\\' &&
           numberMarks.find(value[1]) != std::string_view::npos;
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
            safe = safe && !(inValue && value.size() > longestSerialised && mayBeSerialised(value));
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
