#include "platform/x11/X11Workspace.h"

#include <unistd.h>

namespace lumatile {

std::optional<RunningApplication> X11Workspace::frontmostApplication() {
    const std::vector<ListedWindow> windows = listed();
    const X11Window* active = mirror_.active();
    return active != nullptr ? applicationOf(windows, active->owner()) : std::nullopt;
}

std::optional<RunningApplication> X11Workspace::frontmostOtherApplication() {
    return frontmostOther(listed(), ownPid());
}

std::vector<RunningApplication> X11Workspace::runningApplications() {
    return applicationsOf(listed());
}

Pid X11Workspace::ownPid() { return getpid(); }

bool X11Workspace::open(std::string_view /*address*/) { return false; }

std::vector<ListedWindow> X11Workspace::listed() {
    mirror_.refresh();
    std::vector<ListedWindow> windows;
    for (const xcb_window_t id : mirror_.stacking()) {
        if (const X11Window* window = mirror_.find(id)) {
            windows.push_back({window->owner(), applicationIn(entries_, window->facts.identifier()),
                               window->facts.kind() == WindowKind::normal,
                               mirror_.isMinimized(*window) || mirror_.isShowingDesktop(),
                               mirror_.isElsewhere(*window)});
        }
    }
    return windows;
}

}  // namespace lumatile
