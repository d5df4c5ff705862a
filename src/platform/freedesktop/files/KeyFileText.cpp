#include "platform/freedesktop/files/KeyFileText.h"

#include <algorithm>

namespace lumatile {

namespace {

constexpr std::string_view blanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::optional<std::string_view> groupIn(std::string_view line) {
    line = trimmed(line);
    if (line.size() < 2 || line.front() != '[') {
        return std::nullopt;
    }
    const auto last = line.rfind(']');
    return last == std::string_view::npos ? std::nullopt : std::optional(line.substr(1, last - 1));
}

/// The entry on a line of the group.
std::optional<KeyFileText::Entry> entryIn(std::string_view group, std::string_view line) {
    line = trimmed(line);
    const auto equals = line.find('=');
    if (line.empty() || line.front() == '#' || equals == std::string_view::npos) {
        return std::nullopt;
    }
    return KeyFileText::Entry{group, trimmed(line.substr(0, equals)),
                              trimmed(line.substr(equals + 1))};
}

}  // namespace

std::optional<KeyFileText> KeyFileText::parse(std::string_view text) {
    if (text.size() > maximumBytes || text.find('\0') != std::string_view::npos) {
        return std::nullopt;
    }
    KeyFileText result;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size());
        result.lines_.emplace_back(text.substr(0, length));
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return result;
}

std::string KeyFileText::text() const {
    std::string text;
    for (const std::string& line : lines_) {
        text += line + '\n';
    }
    return text;
}

std::vector<KeyFileText::Entry> KeyFileText::entries() const {
    std::vector<Entry> entries;
    std::string_view group;
    for (const std::string& line : lines_) {
        if (const auto named = groupIn(line)) {
            group = *named;
        } else if (const auto entry = entryIn(group, line)) {
            entries.push_back(*entry);
        }
    }
    return entries;
}

std::optional<std::string_view> KeyFileText::value(std::string_view group,
                                                   std::string_view key) const {
    std::optional<std::string_view> value;
    for (const Entry& entry : entries()) {
        if (entry.group == group && entry.key == key) {
            value = entry.value;
        }
    }
    return value;
}

bool KeyFileText::hasGroup(std::string_view group) const {
    return std::any_of(lines_.begin(), lines_.end(),
                       [&](const std::string& line) { return groupIn(line) == group; });
}

void KeyFileText::set(std::string_view group, std::string_view key, std::string_view value) {
    const std::string line = std::string(key) + '=' + std::string(value);
    std::string_view present;
    bool isInGroup = false;
    auto holding = lines_.end();
    auto endOfGroup = lines_.end();
    for (auto each = lines_.begin(); each != lines_.end(); ++each) {
        if (const auto named = groupIn(*each)) {
            present = *named;
            isInGroup = present == group;
        } else if (isInGroup) {
            const auto entry = entryIn(present, *each);
            if (entry && entry->key == key) {
                holding = each;
            }
        }
        // Blank lines part the groups.
        if (isInGroup && !trimmed(*each).empty()) {
            endOfGroup = each + 1;
        }
    }
    if (holding != lines_.end()) {
        *holding = line;
    } else if (hasGroup(group)) {
        lines_.insert(endOfGroup, line);
    } else {
        if (!lines_.empty()) {
            lines_.emplace_back();
        }
        lines_.push_back('[' + std::string(group) + ']');
        lines_.push_back(line);
    }
}

void KeyFileText::remove(std::string_view group, std::string_view key) {
    bool isInGroup = false;
    std::erase_if(lines_, [&](const std::string& line) {
        if (const auto named = groupIn(line)) {
            isInGroup = *named == group;
            return false;
        }
        const auto entry = isInGroup ? entryIn(group, line) : std::nullopt;
        return entry && entry->key == key;
    });
}

}  // namespace lumatile
