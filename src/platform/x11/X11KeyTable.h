#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace lumatile {

/// One physical key: the virtual key code that shortcuts are stored with, and the place that the
/// server knows it by, whatever is printed on it.
struct X11Key {
    std::uint32_t virtualKeyCode = 0;
    std::string_view position;      ///< The server's name of the key, at most four characters.
    std::uint8_t evdevKeyCode = 0;  ///< The server's key code where it does not name its keys.
    std::string_view name;          ///< What the key is called on an English keyboard.
};

/// The one table between virtual key codes and physical keys, read in both directions.
struct X11KeyTable {
    X11KeyTable() = delete;

    /// No virtual key code, position or evdev key code occurs twice.
    static std::span<const X11Key> keys();

    /// Nothing for a code that belongs to no key.
    static const X11Key* withVirtualKeyCode(std::uint32_t virtualKeyCode);

    /// Nothing for a key that no shortcut can name.
    static const X11Key* atPosition(std::string_view position);
};

}  // namespace lumatile
