#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "geometry/Point.h"
#include "windows/AXWindow.h"

namespace lumatile {

/// Finds the windows of other programs. Nothing here fails loudly: what cannot be found is absent.
class AXBridge {
public:
    /// Levels that are climbed from an element to its window. Deep enough for every toolkit's
    /// nesting, and a bound on the round trips that a malformed parent chain can cost.
    static constexpr int maximumLevelsUp = 11;

    /// Longest wait for one application, seconds, so that one that hangs cannot stall an
    /// enumeration.
    static constexpr double messagingTimeout = 0.25;

    /// @param platform outlives the bridge and the windows that it hands out
    explicit AXBridge(AccessibilityPlatform& platform) : platform_(platform) {}

    /// Whether this process may control windows.
    /// @param prompting show the desktop's own request for permission where it has one
    bool isTrusted(bool prompting) const;

    /// The focused window of the focused application.
    std::shared_ptr<AXWindow> focusedWindow() const;

    /// The focused window of an application, else its main window.
    std::shared_ptr<AXWindow> windowOfApplication(Pid pid) const;

    /// The window that contains what is at `point` (accessibility space).
    std::shared_ptr<AXWindow> windowAt(const Point& point) const;

    /// The snappable windows of the applications, in the order of `pids` and within one in the
    /// application's order.
    std::vector<std::shared_ptr<WindowControlling>> windowsOfApplications(
        const std::vector<Pid>& pids) const;

    /// Whether the element is an ordinary window that may be moved: a standard window, neither
    /// minimized nor full screen, whose position can be set. False when any of this cannot be read.
    bool isSnappable(const Element& element) const;

private:
    bool hasWindowRole(const Element& element) const;

    AccessibilityPlatform& platform_;
};

}  // namespace lumatile
