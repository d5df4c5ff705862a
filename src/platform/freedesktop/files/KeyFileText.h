#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumatile {

/// The text of a file of groups, keys and values, as desktop entries and the settings of KDE are.
/// What is not changed keeps its bytes: comments, order, translations, lines that are none.
class KeyFileText {
public:
    /// Larger than any real file of this kind by far.
    static constexpr std::size_t maximumBytes = std::size_t{1} << 20U;

    /// A line "key=value" in its group.
    struct Entry {
        std::string_view group;  ///< What stands between the first and the last bracket.
        std::string_view key;    ///< Without blanks around it.
        std::string_view value;  ///< As written, escapes included, without blanks around it.
    };

    /// @return absent for a text that is too long or holds a zero byte
    static std::optional<KeyFileText> parse(std::string_view text);

    /// The text; every line ends with a newline.
    std::string text() const;

    /// All of them in their order. They name the text inside, until it changes.
    std::vector<Entry> entries() const;

    /// The last value of the key in the group, or in a second group of that name.
    std::optional<std::string_view> value(std::string_view group, std::string_view key) const;

    bool hasGroup(std::string_view group) const;

    /// Puts a value in the place of the one that holds, or at the end of the group, which is added
    /// where there is none. No argument may hold a newline.
    void set(std::string_view group, std::string_view key, std::string_view value);

    /// Takes every value of the key out of the group.
    void remove(std::string_view group, std::string_view key);

private:
    std::vector<std::string> lines_;
};

}  // namespace lumatile
