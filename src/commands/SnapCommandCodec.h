#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "commands/SnapCommand.h"

namespace lumatile {

/// The order of the keys of every object that is written.
enum class KeyOrder : std::uint8_t {
    field,   ///< As the fields are declared.
    sorted,  ///< By key, so that equal lists are equal texts: for storage and synchronisation.
};

/// White space between what is written.
enum class JSONLayout : std::uint8_t {
    compact,  ///< None.
    pretty,   ///< A line per value, indented: for files that people read.
};

/// The JSON form of a list of commands: an array of objects whose keys are the field names.
struct SnapCommandCodec {
    SnapCommandCodec() = delete;

    /// Bounds of what is read. A longer list than this was not made by a person, and reading it
    /// would hold up the run loop; a list of this length with the longest names fits the bytes.
    static constexpr std::size_t maxCommands = 2000;
    static constexpr std::size_t maxBytes = std::size_t{3} * 1024 * 1024;

    /// Longest string; ample for 40 characters of a name, whatever they are composed of.
    static constexpr std::size_t maxStringBytes = 1024;

    /// Absent as a whole when any command is malformed: a required key missing, null or of another
    /// type, an unknown axis or kind, a number that is not a whole number in range. Unknown keys
    /// are ignored; "shortcut", "group" and "customName" may be missing or null.
    static std::optional<std::vector<SnapCommand>> decodeList(std::string_view json);

    /// UTF-8. Absent fields are left out. Bytes that are not UTF-8 are written as U+FFFD.
    static std::string encodeList(const std::vector<SnapCommand>& commands, KeyOrder order,
                                  JSONLayout layout = JSONLayout::compact);
};

}  // namespace lumatile
