#include "Lumatile/FullScreenWindows.h"

#include <algorithm>
#include <vector>

#include "ports/Workspace.h"
#include "windows/AXBridge.h"
#include "windows/AttributeName.h"
#include "windows/AttributeReader.h"

namespace lumatile {

bool isAnyWindowFullScreen(Workspace& workspace, AccessibilityPlatform& accessibility) {
    const auto is = [&](const Element& window, std::string_view attribute) {
        return AttributeReader::boolean(accessibility, window, attribute).value_or(false);
    };
    const auto applications = workspace.runningApplications();
    return std::any_of(applications.begin(), applications.end(), [&](const auto& application) {
        if (application.isHidden) {
            return false;
        }
        const Element element = accessibility.applicationElement(application.pid);
        accessibility.setMessagingTimeout(element, AXBridge::messagingTimeout);
        const auto windows = AttributeReader::value<std::vector<Element>>(accessibility, element,
                                                                          AttributeName::windows);
        return windows && std::any_of(windows->begin(), windows->end(), [&](const auto& window) {
                   return window && is(window, AttributeName::fullScreen) &&
                          !is(window, AttributeName::minimized);
               });
    });
}

}  // namespace lumatile
