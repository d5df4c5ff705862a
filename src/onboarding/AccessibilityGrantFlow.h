#pragma once

#include <string_view>

#include "windows/AccessibilityPlatform.h"

namespace lumatile {

/// What is asked about the permission to control windows. A value: copies ask the same platform.
class AccessibilityGrantFlow {
public:
    /// The page of the system's settings on which the permission is granted.
    static constexpr std::string_view settingsAddress =
        "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";

    /// @param platform outlives every copy
    explicit AccessibilityGrantFlow(AccessibilityPlatform& platform) : platform_(&platform) {}

    /// Whether this session lets the process control windows.
    /// @param prompt have the system show its own request where it has one and there is no trust
    /// yet
    bool isTrusted(bool prompt) const { return platform_->isTrusted(prompt); }

    /// Whether the system's request is on screen.
    bool isPromptOnScreen() const { return platform_->isPermissionPromptOnScreen(); }

    /// What the session lacks; to be asked only while there is no trust.
    TrustObstacle obstacle() const { return platform_->trustObstacle(); }

private:
    AccessibilityPlatform* platform_;
};

}  // namespace lumatile
