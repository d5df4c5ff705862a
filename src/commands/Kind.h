#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace lumatile {

/// What a command does to a window.
enum class Kind : std::uint8_t {
    area,             ///< Move and size it to the rectangle of the target segments.
    center,           ///< Keep its size and centre it in the visible frame.
    restore,          ///< Put it back to the frame that it had before it was snapped.
    nextDisplay,      ///< Move it to the next display, keeping its relative place.
    previousDisplay,  ///< Move it to the previous display, keeping its relative place.
};

/// The stored texts, in the order of the cases.
inline constexpr std::array<std::string_view, 5> kindRawValues{"area", "center", "restore",
                                                               "nextDisplay", "previousDisplay"};

constexpr std::string_view rawValue(Kind kind) {
    return kindRawValues.at(static_cast<std::size_t>(kind));
}

/// The kind of a raw value; absent for any other text.
constexpr std::optional<Kind> kindFromRawValue(std::string_view text) {
    for (std::size_t i = 0; i < kindRawValues.size(); ++i) {
        if (kindRawValues.at(i) == text) {
            return static_cast<Kind>(i);
        }
    }
    return std::nullopt;
}

}  // namespace lumatile
