#pragma once

#include <cstdint>
#include <iosfwd>

namespace lumatile::desktop {

/// A state in which a window does not simply stand there.
enum class SpecialState : std::uint8_t {
    maximized,
    maximizedVertically,
    maximizedHorizontally,
    tiled,   ///< By the desktop's own key.
    shaded,  ///< Rolled up to its title bar.
    minimized,
    fullScreen,
};

/// For messages of tests: "maximized" …
std::ostream& operator<<(std::ostream& stream, SpecialState state);

}  // namespace lumatile::desktop
