#include "platform/windows/ListedWindow.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>

namespace lumatile {

std::optional<std::string> applicationIn(DesktopEntries& entries,
                                         const std::optional<std::string>& stated) {
    return stated ? std::optional(entries.idOf(*stated)) : std::nullopt;
}

std::vector<RunningApplication> applicationsOf(const std::vector<ListedWindow>& windows) {
    std::vector<RunningApplication> applications;
    std::unordered_map<Pid, std::size_t> places;
    for (const ListedWindow& window : windows) {
        if (!window.owner) {
            continue;
        }
        const auto [place, isNew] = places.try_emplace(*window.owner, applications.size());
        if (isNew) {
            applications.push_back({*window.owner, std::nullopt, false, true});
        }
        RunningApplication& application = applications[place->second];
        if (!application.applicationId) {
            application.applicationId = window.application;
        }
        application.isRegular |= window.isOrdinary;
        application.isHidden &= window.isHidden;
    }
    return applications;
}

std::optional<RunningApplication> applicationOf(const std::vector<ListedWindow>& windows,
                                                std::optional<Pid> owner) {
    const std::vector<RunningApplication> applications = applicationsOf(windows);
    const auto found = std::find_if(
        applications.begin(), applications.end(),
        [owner](const RunningApplication& application) { return owner == application.pid; });
    return found != applications.end() ? std::optional(*found) : std::nullopt;
}

std::optional<RunningApplication> frontmostOther(const std::vector<ListedWindow>& windows,
                                                 Pid own) {
    const auto found =
        std::find_if(windows.begin(), windows.end(), [own](const ListedWindow& window) {
            return window.isOrdinary && !window.isHidden && !window.isElsewhere && window.owner &&
                   *window.owner != own;
        });
    return found != windows.end() ? applicationOf(windows, found->owner) : std::nullopt;
}

}  // namespace lumatile
