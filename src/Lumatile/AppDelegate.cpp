#include "Lumatile/AppDelegate.h"

#include <string_view>
#include <utility>

#include "Lumatile/DesktopTilingMonitor.h"
#include "Lumatile/OnboardingAdvice.h"
#include "onboarding/AccessibilityGrantFlow.h"
#include "onboarding/OnboardingTexts.h"
#include "ports/RunLoop.h"
#include "ports/SystemLog.h"
#include "ports/Workspace.h"

namespace lumatile {

AppDelegate::AppDelegate(const Platform& platform)
    : platform_(platform), app_(std::make_shared<ApplicationConductor>(platform)) {}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
    app_->createStatusMenu();
    if (AccessibilityGrantFlow(platform_.accessibility).isTrusted(false)) {
        continueStart();
    } else {
        showOnboarding();
    }
}

void AppDelegate::applicationShouldHandleReopen() {
    if (!hasStarted_ && onboarding_) {
        onboarding_->show();
    } else {
        app_->openSettings();
    }
}

void AppDelegate::applicationWillTerminate() {
    onboarding_.reset();
    app_->shutdown();
}

void AppDelegate::showOnboarding() {
    const std::function<void()> completion = lifeline_.guard([this] { continueStart(); });
    const std::shared_ptr<OnboardingModel> model = makeModel();
    // What the last page tells the user to try has to work while it is read.
    model->onGranted = lifeline_.guard([this] {
        continueStart();
        if (onboarding_) {
            onboarding_->model()->setAdvice(
                onboardingAdvice(app_->store().hotkeyBindings(), app_->refusedShortcuts()));
        }
    });
    onboarding_ = std::make_shared<OnboardingCoordinator>(model, platform_.onboarding, completion);
    onboarding_->show();
}

std::shared_ptr<OnboardingModel> AppDelegate::makeModel() {
    const AccessibilityGrantFlow flow(platform_.accessibility);
    RunLoop& runLoop = platform_.runLoop;
    return std::make_shared<OnboardingModel>(
        flow, readTiling(platform_.tiling),
        OnboardingModel::Surroundings{
            [&runLoop](double seconds, std::function<void()> tick) {
                return std::shared_ptr<void>(runLoop.repeat(seconds, std::move(tick)));
            },
            [&runLoop] { return runLoop.now(); },
            [&workspace = platform_.workspace, &log = platform_.log,
             flow](std::string_view address) {
                const bool isOpen = workspace.open(address);
                if (!isOpen) {
                    log.write("AccessibilityGrantFlow", OnboardingTexts::missing(flow.obstacle()));
                }
                return isOpen;
            }});
}

void AppDelegate::continueStart() {
    if (hasStarted_) {
        return;
    }
    hasStarted_ = true;
    app_->setAccessibilityGranted();
    app_->startPreferenceSync();
    app_->startFeatures();
    if (onStarted) {
        onStarted();
    }
}

}  // namespace lumatile
