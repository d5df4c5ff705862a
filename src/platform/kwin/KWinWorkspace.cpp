#include "platform/kwin/KWinWorkspace.h"

#include <unistd.h>

namespace lumatile {

namespace {

std::optional<Pid> ownerOf(const KWinWindow& window) {
    return window.record.pid > 0 ? std::optional(window.record.pid) : std::nullopt;
}

}  // namespace

std::optional<RunningApplication> KWinWorkspace::frontmostApplication() {
    const std::vector<ListedWindow> windows = listed();
    const KWinWindow* active = channel_.mirrorSoFar().active();
    return active != nullptr ? applicationOf(windows, ownerOf(*active)) : std::nullopt;
}

std::optional<RunningApplication> KWinWorkspace::frontmostOtherApplication() {
    return frontmostOther(listed(), ownPid());
}

std::vector<RunningApplication> KWinWorkspace::runningApplications() {
    return applicationsOf(listed());
}

Pid KWinWorkspace::ownPid() { return getpid(); }

bool KWinWorkspace::open(std::string_view /*address*/) { return false; }

std::vector<ListedWindow> KWinWorkspace::listed() {
    std::vector<ListedWindow> windows;
    for (const KWinWindow* window : channel_.mirror().windows()) {
        const KWinWindowRecord& record = window->record;
        windows.push_back({ownerOf(*window), record.application, record.kind == WindowKind::normal,
                           record.isMinimized, record.isElsewhere});
    }
    return windows;
}

}  // namespace lumatile
