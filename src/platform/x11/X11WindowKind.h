#pragma once

#include <cstdint>
#include <string_view>

namespace lumatile {

/// What a window is for, as its type property says.
enum class X11WindowKind : std::uint8_t {
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
};

/// The subrole under which a window of this kind is known: "AXStandardWindow" for normal windows
/// alone.
std::string_view subroleOf(X11WindowKind kind);

/// Docks and desktops take the focus at times, yet are nothing that a user would place.
bool isFurniture(X11WindowKind kind);

}  // namespace lumatile
