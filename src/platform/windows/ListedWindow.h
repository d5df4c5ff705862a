#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/freedesktop/files/DesktopEntries.h"
#include "ports/Workspace.h"

namespace lumatile {

/// What is known of a window where applications are listed by their windows.
struct ListedWindow {
    std::optional<Pid> owner;                ///< Absent: not known.
    std::optional<std::string> application;  ///< As `applicationIn` has it.
    bool isOrdinary = false;                 ///< No panel, tool or dialog.
    bool isHidden = false;                   ///< Minimized, or hidden with all others.
    bool isElsewhere = false;                ///< On a virtual desktop that is not shown.
};

/// The name of a window's application that is the same in every session: the id of its desktop
/// entry where one is installed.
/// @param stated the id that the window states, else its class in small letters
std::optional<std::string> applicationIn(DesktopEntries& entries,
                                         const std::optional<std::string>& stated);

/// Each owner once, in the order of their first windows. The id is that of the first window that
/// has one.
std::vector<RunningApplication> applicationsOf(const std::vector<ListedWindow>& windows);

/// @return nothing when it has no window, and for no process
std::optional<RunningApplication> applicationOf(const std::vector<ListedWindow>& windows,
                                                std::optional<Pid> owner);

/// The owner of the first window that is ordinary and can be seen, `own` left out.
std::optional<RunningApplication> frontmostOther(const std::vector<ListedWindow>& windows, Pid own);

}  // namespace lumatile
