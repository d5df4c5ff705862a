#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace lumatile {

/// Where the physical keys are on a keyboard, and what its layouts have on them. Small: the
/// keyboard map that it was made from is not kept.
class KeyMap {
public:
    /// The customary key codes, and nothing on the keys.
    KeyMap();

    /// @param text a keyboard map in XKB's text form
    /// @return nothing for a text that is no such map
    static std::optional<KeyMap> compiled(const std::string& text);

    /// The number of a physical key in events, evdev's plus 8; absent where the keyboard has none
    /// such.
    std::optional<std::uint32_t> keyCodeOf(std::uint32_t virtualKeyCode) const;

    /// The reverse; absent for keys that no shortcut can name.
    std::optional<std::uint32_t> virtualKeyCodeOf(std::uint32_t keyCode) const;

    /// What a key has without modifiers, as XKB numbers it; 0 for nothing.
    /// @param group of the layouts, from 0; a key that has fewer begins anew with its first
    std::uint32_t keysymAt(std::uint32_t virtualKeyCode, std::uint32_t group) const;

    bool operator==(const KeyMap&) const = default;

private:
    struct Key {
        std::uint32_t keyCode = 0;
        std::vector<std::uint32_t> keysyms;  ///< One for each group.

        bool operator==(const Key&) const = default;
    };

    void add(std::uint32_t virtualKeyCode, Key key);

    std::map<std::uint32_t, Key> keys_;                       // By virtual key code.
    std::map<std::uint32_t, std::uint32_t> virtualKeyCodes_;  // By key code.
};

}  // namespace lumatile
