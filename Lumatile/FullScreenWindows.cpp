#include "Lumatile/FullScreenWindows.h"

#include <algorithm>
#include <vector>

#include "Lumatile/Workspace.h"
#include "windows/AXAttribute.h"
#include "windows/AXBridge.h"
#include "windows/AXRead.h"

namespace lumatile {

bool isAnyWindowFullScreen(Workspace& workspace, AccessibilityPlatform& accessibility) {
    const auto is = [&](const AXElement& window, std::string_view attribute) {
        return AXRead::boolean(accessibility, window, attribute).value_or(false);
    };
    const auto applications = workspace.runningApplications();
    return std::any_of(applications.begin(), applications.end(), [&](const auto& application) {
        if (application.isHidden) {
            return false;
        }
        const AXElement element = accessibility.applicationElement(application.pid);
        accessibility.setMessagingTimeout(element, AXBridge::messagingTimeout);
        const auto windows =
            AXRead::value<std::vector<AXElement>>(accessibility, element, AXAttribute::windows);
        return windows && std::any_of(windows->begin(), windows->end(), [&](const auto& window) {
                   return window && is(window, AXAttribute::fullScreen) &&
                          !is(window, AXAttribute::minimized);
               });
    });
}

}  // namespace lumatile
