#include "platform/x11/X11Workspace.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <unordered_map>

namespace lumatile {

std::optional<RunningApplication> X11Workspace::frontmostApplication() {
    const std::vector<RunningApplication> applications = runningApplications();
    const X11Window* active = mirror_.active();
    return ownedBy(active != nullptr ? active->owner() : std::nullopt, applications);
}

std::optional<RunningApplication> X11Workspace::frontmostOtherApplication() {
    const std::vector<RunningApplication> applications = runningApplications();
    if (mirror_.isShowingDesktop()) {
        return std::nullopt;
    }
    for (const xcb_window_t id : mirror_.stacking()) {
        const X11Window* window = mirror_.find(id);
        if (window == nullptr || window->facts.kind() != X11WindowKind::normal ||
            mirror_.isMinimized(*window) || mirror_.isElsewhere(*window)) {
            continue;
        }
        if (const std::optional<Pid> owner = window->owner(); owner && *owner != ownPid()) {
            return ownedBy(owner, applications);
        }
    }
    return std::nullopt;
}

std::optional<RunningApplication> X11Workspace::ownedBy(
    const std::optional<Pid>& pid, const std::vector<RunningApplication>& applications) {
    const auto found =
        std::find_if(applications.begin(), applications.end(),
                     [&](const RunningApplication& application) { return pid == application.pid; });
    return found != applications.end() ? std::optional(*found) : std::nullopt;
}

std::vector<RunningApplication> X11Workspace::runningApplications() {
    mirror_.refresh();
    std::vector<RunningApplication> applications;
    std::unordered_map<Pid, std::size_t> places;
    for (const xcb_window_t id : mirror_.stacking()) {
        const X11Window* window = mirror_.find(id);
        const std::optional<Pid> owner = window != nullptr ? window->owner() : std::nullopt;
        if (!owner) {
            continue;
        }
        const auto [place, isNew] = places.try_emplace(*owner, applications.size());
        if (isNew) {
            applications.push_back({*owner, std::nullopt, false, true});
        }
        RunningApplication& application = applications[place->second];
        if (!application.applicationId) {
            application.applicationId = window->facts.identifier();
        }
        application.isRegular |= window->facts.kind() == X11WindowKind::normal;
        application.isHidden &= mirror_.isMinimized(*window) || mirror_.isShowingDesktop();
    }
    return applications;
}

Pid X11Workspace::ownPid() { return getpid(); }

bool X11Workspace::open(std::string_view /*address*/) { return false; }

}  // namespace lumatile
