#pragma once

#include <cstdint>

namespace lumatile {

/// The modifier flags of a key press that the recorder is told of, whatever toolkit tells it.
struct RecordedModifiers {
    RecordedModifiers() = delete;

    static constexpr std::uint32_t shift = 0x20000;
    static constexpr std::uint32_t control = 0x40000;
    static constexpr std::uint32_t option = 0x80000;
    static constexpr std::uint32_t command = 0x100000;

    /// The classic mask of these flags; others (Caps Lock, function, keypad) are dropped.
    static std::uint32_t classic(std::uint32_t flags);
};

}  // namespace lumatile
