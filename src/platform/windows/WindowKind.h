#pragma once

#include <cstdint>
#include <string_view>

namespace lumatile {

/// What a window is for, as its program or the display system says.
enum class WindowKind : std::uint8_t {
    normal,
    dialog,
    utility,
    toolbar,
    menu,
    splash,
    dock,
    desktop,
    notification,
    popup,  ///< Menus, tool tips and the like, which are no windows of their own.
    other,  ///< A layer surface, an on-screen keyboard: nothing that a user moves.
};

/// The subrole under which a window of this kind is known: "AXStandardWindow" for normal windows
/// alone.
std::string_view subroleOf(WindowKind kind);

/// Docks, desktops and layers take the focus at times, yet are nothing that a user would place:
/// where the user works is elsewhere.
bool isFurniture(WindowKind kind);

}  // namespace lumatile
