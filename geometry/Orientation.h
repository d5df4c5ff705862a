#pragma once

#include <cstdint>

namespace lumatile {

/// The way a screen stands. The raw values are part of the stored forms.
enum class Orientation : std::uint8_t {
    horizontal = 0,  ///< Landscape; a square screen counts as landscape.
    vertical = 1,    ///< Portrait: strictly narrower than high.
};

}  // namespace lumatile
