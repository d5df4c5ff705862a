#include "platform/kwin/KWinWorkspace.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <unordered_map>

namespace lumatile {

std::optional<RunningApplication> KWinWorkspace::frontmostApplication() {
    const KWinWindow* active = channel_.mirror().active();
    return active != nullptr ? ownedBy(active->record.pid) : std::nullopt;
}

std::optional<RunningApplication> KWinWorkspace::frontmostOtherApplication() {
    for (const KWinWindow* window : channel_.mirror().windows()) {
        const KWinWindowRecord& record = window->record;
        if (record.kind == KWinWindowKind::normal && !record.isMinimized && !record.isElsewhere &&
            record.pid > 0 && record.pid != ownPid()) {
            return ownedBy(record.pid);
        }
    }
    return std::nullopt;
}

std::vector<RunningApplication> KWinWorkspace::runningApplications() {
    std::vector<RunningApplication> applications;
    std::unordered_map<Pid, std::size_t> places;
    for (const KWinWindow* window : channel_.mirror().windows()) {
        const KWinWindowRecord& record = window->record;
        if (record.pid <= 0) {
            continue;
        }
        const auto [place, isNew] = places.try_emplace(record.pid, applications.size());
        if (isNew) {
            applications.push_back({record.pid, std::nullopt, false, true});
        }
        RunningApplication& application = applications[place->second];
        if (!application.applicationId) {
            application.applicationId = record.application;
        }
        application.isRegular |= record.kind == KWinWindowKind::normal;
        application.isHidden &= record.isMinimized;
    }
    return applications;
}

Pid KWinWorkspace::ownPid() { return getpid(); }

bool KWinWorkspace::open(std::string_view /*address*/) { return false; }

std::optional<RunningApplication> KWinWorkspace::ownedBy(Pid pid) {
    const std::vector<RunningApplication> applications = runningApplications();
    const auto found = std::find_if(
        applications.begin(), applications.end(),
        [pid](const RunningApplication& application) { return application.pid == pid; });
    return found != applications.end() ? std::optional(*found) : std::nullopt;
}

}  // namespace lumatile
