#include "platform/kwin/KWinWorkspace.h"

#include <unistd.h>

namespace lumatile {

std::optional<RunningApplication> KWinWorkspace::frontmostApplication() {
    const std::vector<ListedWindow> windows = listed();
    const KWinWindow* active = channel_.mirrorSoFar().active();
    return active != nullptr ? applicationOf(windows, active->record.pid) : std::nullopt;
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
        windows.push_back({record.pid, applicationIn(entries_, record.application),
                           record.kind == WindowKind::normal, record.isMinimized,
                           record.isElsewhere});
    }
    return windows;
}

}  // namespace lumatile
