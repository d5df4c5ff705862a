#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lumatile {

/// Text that a program wrote into a property, where it is safe to show and to compare: valid UTF-8
/// without control characters.
struct X11PlainText {
    X11PlainText() = delete;

    static constexpr std::size_t longest = 255;  ///< Bytes; no identifier needs as many.

    /// Absent when `bytes` is empty, longer than `longest` or not such a text.
    static std::optional<std::string> of(std::string_view bytes);
};

}  // namespace lumatile
