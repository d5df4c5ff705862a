#pragma once

#include <sys/types.h>

#include <cstdint>
#include <iosfwd>
#include <string>

#include "geometry/Rect.h"

namespace lumatile::desktop {

/// A window as the compositor sees it. Rectangles in the compositor's space, logical pixels.
struct WindowState {
    std::string id;  ///< For as long as the window lives.
    pid_t pid = 0;
    std::uint32_t xid = 0;  ///< Of a window on the X server; 0 for others.
    std::string caption;
    std::string windowClass;
    std::string desktopFile;
    Rect frame;  ///< With the frame that is drawn round it.
    bool minimized = false;
    bool maximizedHorizontally = false;
    bool maximizedVertically = false;
    bool fullScreen = false;
    bool tiled = false;  ///< By the compositor's own edge tiling.
    bool active = false;
    bool moving = false;    ///< By the user, at this moment.
    bool resizing = false;  ///< The same.
    bool managed = false;
    bool shaded = false;  ///< Rolled up to its title bar.
    int screen = -1;
    int desktop = 0;  ///< The virtual desktop, from 1 on; -1: all of them.

    bool operator==(const WindowState&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const WindowState& state);

}  // namespace lumatile::desktop
