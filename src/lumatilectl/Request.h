#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace lumatile {

/// What a command line asks for.
struct Request {
    enum class Verb : std::uint8_t {
        help,
        version,
        listCommands,
        run,
        settings,
        status,
        listProtections,
        setProtection,
        isExaggerated,
        setExaggerated,
        quit,
    };

    Verb verb = Verb::help;
    std::string name;   ///< Of the command, the section or the protection; else empty.
    bool isOn = false;  ///< For what is switched.

    bool operator==(const Request&) const = default;

    /// @param words what follows the program's name
    /// @return absent when it is no request
    static std::optional<Request> parse(std::span<const std::string_view> words);

    /// What can be asked for, for a reader.
    static const std::string_view usage;
};

}  // namespace lumatile
