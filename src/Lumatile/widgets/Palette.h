#pragma once

#include <cstdint>

namespace lumatile {

/// An opaque sRGB colour.
struct PaletteColor {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const PaletteColor&) const = default;
};

/// The colours that all of the program's own views are drawn with.
struct Palette {
    Palette() = delete;

    static constexpr PaletteColor lightTint{239, 235, 227};
    static constexpr PaletteColor accent{255, 91, 31};
};

}  // namespace lumatile
