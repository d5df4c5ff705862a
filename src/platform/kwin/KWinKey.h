#pragma once

#include <cstdint>
#include <optional>

namespace lumatile {

/// A combination as Plasma numbers it: a key of the toolkit that it is written with, and the bits
/// of the modifiers.
struct KWinKey {
    KWinKey() = delete;

    /// @param keysym what is on the key without modifiers
    /// @param modifiers classic modifier mask; unknown bits are left out
    /// @return absent for a key that has no such number
    static std::optional<std::int32_t> of(std::uint32_t keysym, std::uint32_t modifiers);

    /// The classic modifier mask of a combination.
    static std::uint32_t modifiersOf(std::int32_t combination);

    /// Whether this key is in a combination, whatever the modifiers.
    static bool isIn(std::int32_t combination, std::uint32_t keysym);
};

}  // namespace lumatile
