#include "tests/desktop/support/kwin/WindowState.h"

#include <ostream>

namespace lumatile::desktop {

std::ostream& operator<<(std::ostream& stream, const WindowState& state) {
    stream << "\"" << state.caption << "\" at " << state.frame.x << ", " << state.frame.y << ", "
           << state.frame.width << " x " << state.frame.height << " on screen " << state.screen
           << ", virtual desktop " << state.desktop;
    const auto name = [&](bool is, const char* word) {
        if (is) {
            stream << ", " << word;
        }
    };
    name(state.active, "active");
    name(state.minimized, "minimized");
    name(state.maximizedHorizontally, "maximized horizontally");
    name(state.maximizedVertically, "maximized vertically");
    name(state.fullScreen, "full screen");
    name(state.tiled, "tiled");
    name(state.moving, "moving");
    name(state.resizing, "resizing");
    name(state.shaded, "shaded");
    name(!state.managed, "not managed");
    return stream;
}

}  // namespace lumatile::desktop
