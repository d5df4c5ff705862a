#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "tests/desktop/support/PixelRect.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// What a user would notice of a window apart from where it is; a shift changes nothing of it.
struct WindowCondition {
    std::vector<std::uint32_t> states;   ///< _NET_WM_STATE, less the mark of the focus.
    std::uint32_t iconic = 0;            ///< WM_STATE: 1 normal, 3 iconic.
    std::vector<std::uint32_t> desktop;  ///< _NET_WM_DESKTOP
    int mapState = 0;

    static WindowCondition of(XClient& client, xcb_window_t window);

    bool operator==(const WindowCondition&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const WindowCondition& condition);

/// What a user would notice of the desktop as a whole.
struct DesktopCondition {
    std::vector<std::uint32_t> stacking;
    std::uint32_t active = 0;
    std::vector<std::uint32_t> currentDesktop;

    static DesktopCondition of(XClient& client);

    bool operator==(const DesktopCondition&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const DesktopCondition& condition);

}  // namespace lumatile::desktop
