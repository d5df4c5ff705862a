#include "windows/AXBridge.h"

#include <string>

#include "windows/AttributeName.h"
#include "windows/AttributeReader.h"

namespace lumatile {

bool AXBridge::isTrusted(bool prompting) const { return platform_.isTrusted(prompting); }

std::shared_ptr<AXWindow> AXBridge::focusedWindow() const {
    const auto application = AttributeReader::element(platform_, platform_.systemWideElement(),
                                                      AttributeName::focusedApplication);
    if (!application) {
        return nullptr;
    }
    const auto window =
        AttributeReader::element(platform_, *application, AttributeName::focusedWindow);
    return window ? std::make_shared<AXWindow>(platform_, *window) : nullptr;
}

std::shared_ptr<AXWindow> AXBridge::windowOfApplication(Pid pid) const {
    const Element application = platform_.applicationElement(pid);
    auto window = AttributeReader::element(platform_, application, AttributeName::focusedWindow);
    if (!window) {
        window = AttributeReader::element(platform_, application, AttributeName::mainWindow);
    }
    return window ? std::make_shared<AXWindow>(platform_, *window) : nullptr;
}

std::shared_ptr<AXWindow> AXBridge::windowAt(const Point& point) const {
    std::optional<Element> element = platform_.elementAtPoint(point);
    for (int level = 0; element && *element; ++level) {
        if (hasWindowRole(*element)) {
            return std::make_shared<AXWindow>(platform_, *element);
        }
        if (level == maximumLevelsUp) {
            return nullptr;
        }
        element = AttributeReader::element(platform_, *element, AttributeName::parent);
    }
    return nullptr;
}

std::vector<std::shared_ptr<WindowControlling>> AXBridge::windowsOfApplications(
    const std::vector<Pid>& pids) const {
    std::vector<std::shared_ptr<WindowControlling>> result;
    for (const Pid pid : pids) {
        const Element application = platform_.applicationElement(pid);
        platform_.setMessagingTimeout(application, messagingTimeout);
        const auto windows = AttributeReader::value<std::vector<Element>>(platform_, application,
                                                                          AttributeName::windows);
        if (!windows) {
            continue;
        }
        for (const Element& window : *windows) {
            if (window && isSnappable(window)) {
                result.push_back(std::make_shared<AXWindow>(platform_, window));
            }
        }
    }
    return result;
}

bool AXBridge::isSnappable(const Element& element) const {
    return hasWindowRole(element) &&
           AttributeReader::value<std::string>(platform_, element, AttributeName::subrole) ==
               AttributeName::standardWindowSubrole &&
           !AttributeReader::boolean(platform_, element, AttributeName::minimized)
                .value_or(false) &&
           !AttributeReader::boolean(platform_, element, AttributeName::fullScreen)
                .value_or(false) &&
           platform_.isSettable(element, AttributeName::position).value_or(false);
}

bool AXBridge::hasWindowRole(const Element& element) const {
    return AttributeReader::value<std::string>(platform_, element, AttributeName::role) ==
           AttributeName::windowRole;
}

}  // namespace lumatile
