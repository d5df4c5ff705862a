#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace lumatile {

/// A universally unique identifier of 128 bits.
struct UUID {
    std::array<std::uint8_t, 16> bytes{};

    /// A fresh random identifier (version 4, variant 1).
    static UUID random();

    /// Reads the canonical text of 36 characters (8-4-4-4-12 hexadecimal digits), in either case.
    /// @return absent for any other text
    static std::optional<UUID> parse(std::string_view text);

    /// The canonical text in upper case, as it is stored.
    std::string text() const;

    /// The canonical text in lower case, as the keys of custom areas hold it.
    std::string lowercaseText() const;

    bool operator==(const UUID&) const = default;
};

}  // namespace lumatile

template <>
struct std::hash<lumatile::UUID> {
    std::size_t operator()(const lumatile::UUID& uuid) const noexcept;
};
