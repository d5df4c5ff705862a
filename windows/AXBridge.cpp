#include "windows/AXBridge.h"

#include <string>

#include "windows/AXAttribute.h"
#include "windows/AXRead.h"

namespace lumatile {

bool AXBridge::isTrusted(bool prompting) const { return platform_.isTrusted(prompting); }

std::shared_ptr<AXWindow> AXBridge::focusedWindow() const {
    const auto application =
        AXRead::element(platform_, platform_.systemWideElement(), AXAttribute::focusedApplication);
    if (!application) {
        return nullptr;
    }
    const auto window = AXRead::element(platform_, *application, AXAttribute::focusedWindow);
    return window ? std::make_shared<AXWindow>(platform_, *window) : nullptr;
}

std::shared_ptr<AXWindow> AXBridge::windowOfApplication(Pid pid) const {
    const AXElement application = platform_.applicationElement(pid);
    auto window = AXRead::element(platform_, application, AXAttribute::focusedWindow);
    if (!window) {
        window = AXRead::element(platform_, application, AXAttribute::mainWindow);
    }
    return window ? std::make_shared<AXWindow>(platform_, *window) : nullptr;
}

std::shared_ptr<AXWindow> AXBridge::windowAt(const Point& point) const {
    std::optional<AXElement> element = platform_.elementAtPoint(point);
    for (int level = 0; element && *element; ++level) {
        if (hasWindowRole(*element)) {
            return std::make_shared<AXWindow>(platform_, *element);
        }
        if (level == maximumLevelsUp) {
            return nullptr;
        }
        element = AXRead::element(platform_, *element, AXAttribute::parent);
    }
    return nullptr;
}

std::vector<std::shared_ptr<WindowControlling>> AXBridge::windowsOfApplications(
    const std::vector<Pid>& pids) const {
    std::vector<std::shared_ptr<WindowControlling>> result;
    for (const Pid pid : pids) {
        const AXElement application = platform_.applicationElement(pid);
        platform_.setMessagingTimeout(application, messagingTimeout);
        const auto windows =
            AXRead::value<std::vector<AXElement>>(platform_, application, AXAttribute::windows);
        if (!windows) {
            continue;
        }
        for (const AXElement& window : *windows) {
            if (window && isSnappable(window)) {
                result.push_back(std::make_shared<AXWindow>(platform_, window));
            }
        }
    }
    return result;
}

bool AXBridge::isSnappable(const AXElement& element) const {
    return hasWindowRole(element) &&
           AXRead::value<std::string>(platform_, element, AXAttribute::subrole) ==
               AXAttribute::standardWindowSubrole &&
           !AXRead::boolean(platform_, element, AXAttribute::minimized).value_or(false) &&
           !AXRead::boolean(platform_, element, AXAttribute::fullScreen).value_or(false) &&
           platform_.isSettable(element, AXAttribute::position).value_or(false);
}

bool AXBridge::hasWindowRole(const AXElement& element) const {
    return AXRead::value<std::string>(platform_, element, AXAttribute::role) ==
           AXAttribute::windowRole;
}

}  // namespace lumatile
