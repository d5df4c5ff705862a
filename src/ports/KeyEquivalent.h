#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "commands/Shortcut.h"

namespace lumatile {

/// The keys that a menu item shows beside its title.
struct KeyEquivalent {
    /// Where they work, which decides what key a desktop has in the place of Command.
    enum class Reach : std::uint8_t {
        program,  ///< In the program's own windows, as a menu's keys do.
        desktop,  ///< Everywhere, as hot keys do.
    };

    std::string key;  ///< As `ShortcutFormatter::keyEquivalent` gives it; empty: none.
    bool control = false;
    bool option = false;
    bool shift = false;
    bool command = false;
    Reach reach = Reach::program;

    /// Virtual key code of a hot key that `key` has no name for.
    std::optional<std::uint32_t> namelessKeyCode = std::nullopt;

    /// Those of a global shortcut.
    /// @param modifiers classic modifier mask; unknown bits are ignored
    static KeyEquivalent ofHotKey(std::string key, std::uint32_t modifiers,
                                  std::optional<std::uint32_t> namelessKeyCode = std::nullopt) {
        const auto has = [modifiers](std::uint32_t bit) { return (modifiers & bit) != 0; };
        return {std::move(key),
                has(ClassicModifier::control),
                has(ClassicModifier::option),
                has(ClassicModifier::shift),
                has(ClassicModifier::command),
                Reach::desktop,
                namelessKeyCode};
    }

    /// Those of the menu itself, with Command.
    static KeyEquivalent ofMenu(std::string key) {
        return {std::move(key), false, false, false, true, Reach::program, {}};
    }

    bool operator==(const KeyEquivalent&) const = default;
};

}  // namespace lumatile
