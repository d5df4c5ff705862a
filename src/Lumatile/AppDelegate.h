#pragma once

#include <functional>
#include <memory>

#include "Lumatile/ApplicationConductor.h"
#include "Lumatile/OnboardingCoordinator.h"
#include "base/Lifeline.h"
#include "ports/Platform.h"

namespace lumatile {

/// Start and end of the program, and the wait for the permission to control windows.
class AppDelegate {
public:
    /// @param platform the adapters behind it outlive the delegate
    explicit AppDelegate(const Platform& platform);
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;
    ~AppDelegate();

    /// Runs once, right after the features have been started.
    std::function<void()> onStarted;

    /// To be called once, when the run loop can deliver events. Starts the features, or where the
    /// session does not let us control windows shows the onboarding, after which they start.
    void applicationDidFinishLaunching();

    /// The user has started the program while it runs: shows the onboarding for as long as the
    /// permission is missing, and the settings afterwards.
    void applicationShouldHandleReopen();

    /// To be called once, before the adapters go.
    void applicationWillTerminate();

    ApplicationConductor& app() { return *app_; }

    /// Null where the permission was there from the beginning.
    const OnboardingCoordinator* onboarding() const { return onboarding_.get(); }

private:
    void showOnboarding();
    std::shared_ptr<OnboardingModel> makeModel();
    void continueStart();

    Platform platform_;
    std::shared_ptr<ApplicationConductor> app_;
    std::shared_ptr<OnboardingCoordinator> onboarding_;
    bool hasStarted_ = false;
    Lifeline lifeline_;  // For the completion of the onboarding.
};

}  // namespace lumatile
