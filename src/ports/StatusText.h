#pragma once

#include <cstdint>
#include <string>

namespace lumatile {

/// A text with the look that it is to have where the desktop can give it one.
struct StatusText {
    /// Named by their use: each desktop has its own values.
    enum class Color : std::uint8_t { label, secondaryLabel };

    std::string text;
    std::string fontName;  ///< Family and weight; where it is missing, the monospaced system font.
    double pointSize = 0;
    Color color = Color::label;

    bool operator==(const StatusText&) const = default;
};

}  // namespace lumatile
