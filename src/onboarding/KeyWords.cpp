#include "onboarding/KeyWords.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace lumatile::KeyWords {

namespace {

using Word = std::pair<std::string_view, std::string_view>;

// As `ShortcutFormatter` writes them.
constexpr std::array<Word, 4> modifiers{{
    {"⌃", "Ctrl+"},
    {"⌥", "Alt+"},
    {"⇧", "Shift+"},
    {"⌘", "Super+"},
}};
constexpr std::array<Word, 14> specialKeys{{
    {"↩", "Return"},
    {"⇥", "Tab"},
    {"␣", "Space"},
    {"⌫", "Backspace"},
    {"⎋", "Escape"},
    {"⌦", "Delete"},
    {"←", "Left"},
    {"→", "Right"},
    {"↓", "Down"},
    {"↑", "Up"},
    {"↖", "Home"},
    {"↘", "End"},
    {"⇞", "Page Up"},
    {"⇟", "Page Down"},
}};

/// The word for what `text` begins with; null where that is none of `words`.
template <std::size_t count>
const Word* atStart(std::string_view text, const std::array<Word, count>& words) {
    const auto* const found = std::find_if(words.begin(), words.end(), [text](const Word& word) {
        return text.starts_with(word.first);
    });
    return found == words.end() ? nullptr : found;
}

bool isLetterOrDigit(char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= 'a' && byte <= 'z');
}

/// The key that `text` begins with, behind modifiers: a name such as "F5", or one character.
std::string_view keyAtStart(std::string_view text) {
    const auto* const end = std::find_if_not(text.begin(), text.end(), isLetterOrDigit);
    return end != text.begin() ? text.substr(0, static_cast<std::size_t>(end - text.begin()))
                               : text.substr(0, 1);
}

/// The special keys that `text` begins with, with a blank between two; what they take of it.
std::size_t keysAtStart(std::string_view text, std::vector<std::string_view>& names) {
    std::size_t length = 0;
    while (const Word* key = atStart(text.substr(length), specialKeys)) {
        names.push_back(key->second);
        length += key->first.size();
        const std::string_view rest = text.substr(length);
        if (!rest.starts_with(' ') || atStart(rest.substr(1), specialKeys) == nullptr) {
            break;
        }
        ++length;
    }
    return length;
}

/// "Left, Right or Up".
std::string choice(const std::vector<std::string_view>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i > 0) {
            text += i + 1 == names.size() ? " or " : ", ";
        }
        text += names[i];
    }
    return text;
}

}  // namespace

bool occurIn(std::string_view text) {
    const auto occurs = [text](const Word& word) {
        return text.find(word.first) != std::string_view::npos;
    };
    return std::any_of(modifiers.begin(), modifiers.end(), occurs) ||
           std::any_of(specialKeys.begin(), specialKeys.end(), occurs);
}

std::string written(std::string_view text, const Legends& legends) {
    std::string result;
    bool isBehindModifiers = false;
    while (!text.empty()) {
        if (const Word* modifier = atStart(text, modifiers)) {
            result += modifier->second;
            text.remove_prefix(modifier->first.size());
            isBehindModifiers = true;
            continue;
        }
        if (isBehindModifiers && text.starts_with(' ')) {
            text.remove_prefix(1);
        }
        std::vector<std::string_view> names;
        std::size_t length = keysAtStart(text, names);
        if (length > 0) {
            result += choice(names);
        } else if (isBehindModifiers && !text.empty()) {
            const std::string_view key = keyAtStart(text);
            const auto legend = legends.find(key);
            result += legend != legends.end() ? legend->second : key;
            length = key.size();
        } else if (!text.empty()) {
            result += text.front();
            length = 1;
        }
        text.remove_prefix(length);
        isBehindModifiers = false;
    }
    return result;
}

}  // namespace lumatile::KeyWords
