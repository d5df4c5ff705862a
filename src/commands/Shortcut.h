#pragma once

#include <cstdint>

namespace lumatile {

/// A global keyboard shortcut.
struct Shortcut {
    std::uint32_t carbonKeyCode = 0;    ///< Virtual key code: a physical key, 123 is left arrow.
    std::uint32_t carbonModifiers = 0;  ///< Classic modifier mask, the bits of `ClassicModifier`.
    bool enabled = false;               ///< A disabled shortcut keeps its key, unregistered.

    bool operator==(const Shortcut&) const = default;
};

/// The bits of a classic modifier mask.
struct ClassicModifier {
    ClassicModifier() = delete;

    static constexpr std::uint32_t command = 256;
    static constexpr std::uint32_t shift = 512;
    static constexpr std::uint32_t option = 2048;
    static constexpr std::uint32_t control = 4096;
};

}  // namespace lumatile
