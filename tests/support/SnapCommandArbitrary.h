#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <rapidcheck.h>

#include "commands/SnapCommand.h"

namespace lumatile {

/// Any text in UTF-8, with what writers of JSON must escape and what takes several code points.
inline std::string arbitraryText() {
    const auto parts = *rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
        "a", "Z", " ", "\"", "\\", "/", "\n", "\x01", std::string(1, '\0'), "\u007F", "\u00E9",
        "e\u0301", "\u2028", "\uFFFF", "\U0001F468\u200D\U0001F469", "\U0001F1E8\U0001F1ED",
        "\U0010FFFF"));
    std::string text;
    for (const std::string& part : parts) {
        text += part;
    }
    return text;
}

template <typename Make>
auto arbitraryOptional(Make make) -> std::optional<decltype(make())> {
    return *rc::gen::arbitrary<bool>() ? std::optional(make()) : std::nullopt;
}

inline UUID arbitraryId() {
    UUID id;
    for (auto& byte : id.bytes) {
        byte = *rc::gen::arbitrary<std::uint8_t>();
    }
    return id;
}

inline Shortcut arbitraryShortcut() {
    return {*rc::gen::arbitrary<std::uint32_t>(), *rc::gen::arbitrary<std::uint32_t>(),
            *rc::gen::arbitrary<bool>()};
}

/// A few short segments; long ones say nothing more and take long.
inline std::vector<Segment> arbitrarySegments() {
    return *rc::gen::resize(8, rc::gen::arbitrary<std::vector<Segment>>());
}

inline SnapCommand arbitraryCommand() {
    SnapCommand command;
    command.id = arbitraryId();
    // Often a key that the program knows, so that lists meet the built-in commands.
    command.nameKey = *rc::gen::arbitrary<bool>()
                          ? *rc::gen::element<std::string>("command.left", "command.maximize",
                                                           "command.center", "command.rightThird",
                                                           "command.gone", "custom.a", "custom.b")
                          : arbitraryText();
    command.axis = *rc::gen::element(Axis::horizontal, Axis::vertical);
    command.kind = *rc::gen::element(Kind::area, Kind::center, Kind::restore, Kind::nextDisplay,
                                     Kind::previousDisplay);
    command.targetSegments = *rc::gen::element(
        std::vector<Segment>{}, std::vector<Segment>{{3, 3, 1, 1}}, arbitrarySegments());
    command.activationSegments = arbitrarySegments();
    command.shortcut = arbitraryOptional(arbitraryShortcut);
    command.visibleInMenuBar = *rc::gen::arbitrary<bool>();
    command.visibleInGreenButtonMenu = *rc::gen::arbitrary<bool>();
    command.group = arbitraryOptional(arbitraryText);
    command.customName = arbitraryOptional(arbitraryText);
    return command;
}

inline std::vector<SnapCommand> arbitraryCommands() {
    std::vector<SnapCommand> commands(*rc::gen::inRange<std::size_t>(0, 12));
    for (SnapCommand& command : commands) {
        command = arbitraryCommand();
    }
    return commands;
}

}  // namespace lumatile
