#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace lumatile {

/// Which of the server's eight modifier bits mean what on the present keyboard.
struct X11ModifierMap {
    static constexpr std::uint16_t shift = 1;
    static constexpr std::uint16_t capsLock = 2;
    static constexpr std::uint16_t control = 4;
    static constexpr std::uint16_t all = 0xff;

    std::uint16_t alt = 8;         ///< Customarily Mod1.
    std::uint16_t super = 64;      ///< Customarily Mod4.
    std::uint16_t numLock = 0;     ///< 0 where no key locks it.
    std::uint16_t scrollLock = 0;  ///< 0 where no key locks it, which is common.

    bool operator==(const X11ModifierMap&) const = default;

    /// The keyboard as the server tells it.
    struct Source {
        std::span<const std::uint8_t> modifierKeys;  ///< Key codes, the same number per modifier.
        std::span<const std::uint32_t> keysyms;      ///< The same number per key code.
        std::uint8_t firstKeyCode = 8;               ///< Of `keysyms`.
        std::size_t keysymsPerKeyCode = 0;
    };

    static X11ModifierMap found(const Source& source);

    /// Bits of a classic modifier mask as bits of the server; other bits are ignored.
    std::uint16_t ofClassic(std::uint32_t modifiers) const;

    /// Every state of the lock keys, the one with none first.
    std::vector<std::uint16_t> lockStates() const;

    /// Caps, Num and Scroll Lock together.
    std::uint16_t locks() const { return capsLock | numLock | scrollLock; }
};

}  // namespace lumatile
