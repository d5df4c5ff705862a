#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace lumatile {

/// One physical key: the virtual key code that shortcuts are stored with, and the place that
/// keyboard maps know it by, whatever is printed on it.
struct PhysicalKey {
    std::uint32_t virtualKeyCode = 0;
    std::string_view position;      ///< XKB's name of the key, at most four characters.
    std::uint8_t evdevKeyCode = 0;  ///< The key code where keys are not named: evdev's plus 8.
    std::string_view name;          ///< What the key is called on an English keyboard.
};

/// The one table between virtual key codes and physical keys, read in both directions.
struct KeyTable {
    KeyTable() = delete;

    /// No virtual key code, position or evdev key code occurs twice.
    static std::span<const PhysicalKey> keys();

    /// Nothing for a code that belongs to no key.
    static const PhysicalKey* withVirtualKeyCode(std::uint32_t virtualKeyCode);

    /// Nothing for a key that no shortcut can name.
    static const PhysicalKey* atPosition(std::string_view position);
};

}  // namespace lumatile
