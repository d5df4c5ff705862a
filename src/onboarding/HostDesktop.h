#pragma once

#include <string_view>

namespace lumatile {

/// The families of desktops whose settings and whose words are known.
enum class DesktopKind {
    plasma,
    gnome,
    metacity,  ///< GNOME Flashback, or its window manager by itself.
    cinnamon,
    mate,
    xfce,
    other,  ///< A plain window manager, or a desktop that is not known.
};

/// The desktop that the program runs on.
struct HostDesktop {
    DesktopKind kind = DesktopKind::other;
    /// False where only the window manager is of that family, in a session of another name.
    bool isSession = false;

    bool operator==(const HostDesktop&) const = default;

    /// The session's own name decides; where that is not known, the window manager's does.
    /// @param sessionNames the names that the session gives itself, most specific first, separated
    ///   by colons (XDG_CURRENT_DESKTOP); upper and lower case are the same
    /// @param windowManager the name that the running window manager gives itself; empty for none
    static HostDesktop find(std::string_view sessionNames, std::string_view windowManager);
};

}  // namespace lumatile
