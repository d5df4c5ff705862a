#include "platform/simulated/SimulatedWorkspace.h"

#include <algorithm>

namespace lumatile {

std::optional<RunningApplication> SimulatedWorkspace::frontmostApplication() {
    const std::optional<ApplicationID> id = stuck_ ? stuck_ : programs_.focusedApplication();
    const SimulatedApplication* application = id ? programs_.find(*id) : nullptr;
    return application ? describe(*application) : std::nullopt;
}

std::optional<RunningApplication> SimulatedWorkspace::frontmostOtherApplication() {
    const std::vector<WindowID>& stacking = programs_.stacking();
    for (auto id = stacking.rbegin(); id != stacking.rend(); ++id) {
        const SimulatedWindow* window = programs_.find(*id);
        if (!window || !window->isStandard() || !programs_.canBeSeen(*window)) {
            continue;
        }
        const SimulatedApplication* owner = programs_.find(window->application);
        auto described = owner ? describe(*owner) : std::nullopt;
        if (described && described->pid != ownPid_) {
            return described;
        }
    }
    return std::nullopt;
}

std::vector<RunningApplication> SimulatedWorkspace::runningApplications() {
    std::vector<RunningApplication> result;
    for (const auto& [id, application] : programs_.applications()) {
        if (const auto described = describe(application)) {
            result.push_back(*described);
        }
    }
    return result;
}

bool SimulatedWorkspace::open(std::string_view address) {
    addresses.emplace_back(address);
    return opensAddresses;
}

std::optional<RunningApplication> SimulatedWorkspace::describe(
    const SimulatedApplication& application) const {
    if (!application.traits.pid) {
        return std::nullopt;
    }
    const auto& windows = application.windows;
    const bool hasStandard = std::any_of(windows.begin(), windows.end(), [&](WindowID id) {
        const SimulatedWindow* window = programs_.find(id);
        return window && window->isStandard();
    });
    const bool isAnySeen = std::any_of(windows.begin(), windows.end(), [&](WindowID id) {
        const SimulatedWindow* window = programs_.find(id);
        return window && programs_.canBeSeen(*window);
    });
    RunningApplication result;
    result.pid = *application.traits.pid;
    result.applicationId = application.traits.applicationId;
    result.isRegular = application.traits.isRegular.value_or(hasStandard);
    result.isHidden = application.isHidden || (!windows.empty() && !isAnySeen);
    return result;
}

}  // namespace lumatile
