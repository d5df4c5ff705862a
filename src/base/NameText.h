#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace lumatile {

/// Operations on names, by the characters that a reader sees. Texts are UTF-8.
struct NameText {
    NameText() = delete;

    static bool isUTF8(std::string_view text);

    /// `text` without white space (space separators and tabs) and line breaks at both ends. A part
    /// of `text` itself.
    static std::string_view trimmed(std::string_view text);

    /// The beginning of `text`: at most `maxCharacters` whole characters in at most `maxBytes`
    /// bytes. A character is an extended grapheme cluster, so neither an accent nor a part of an
    /// emoji is cut off its base. A part of `text` itself.
    static std::string_view prefix(std::string_view text, std::size_t maxCharacters,
                                   std::size_t maxBytes);

    /// A title made from a key: split into words before each capital letter, every word beginning
    /// with a capital, with single spaces between them.
    static std::string title(std::string_view key);
};

}  // namespace lumatile
