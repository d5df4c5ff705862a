#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ports/Workspace.h"

namespace lumatile {

/// What is known of a window where applications are listed by their windows.
struct ListedWindow {
    std::optional<Pid> owner;                ///< Absent: not known.
    std::optional<std::string> application;  ///< Desktop file id, else the window class.
    bool isOrdinary = false;                 ///< No panel, tool or dialog.
    bool isHidden = false;                   ///< Minimized, or hidden with all others.
    bool isElsewhere = false;                ///< On a virtual desktop that is not shown.
};

/// Each owner once, in the order of their first windows. The id is that of the first window that
/// has one.
std::vector<RunningApplication> applicationsOf(const std::vector<ListedWindow>& windows);

/// @return nothing when it has no window, and for no process
std::optional<RunningApplication> applicationOf(const std::vector<ListedWindow>& windows,
                                                std::optional<Pid> owner);

/// The owner of the first window that is ordinary and can be seen, `own` left out.
std::optional<RunningApplication> frontmostOther(const std::vector<ListedWindow>& windows, Pid own);

}  // namespace lumatile
