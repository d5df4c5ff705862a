#pragma once

#include <functional>
#include <memory>

#include "onboarding/OnboardingModel.h"
#include "ports/OnboardingPresenting.h"

namespace lumatile {

/// Owns the onboarding window for as long as it is needed. To be owned by a shared pointer:
/// what it hands out holds it weakly.
class OnboardingCoordinator : public std::enable_shared_from_this<OnboardingCoordinator> {
public:
    /// @param presenter outlives the coordinator
    /// @param onComplete runs each time the user has read to the end
    OnboardingCoordinator(std::shared_ptr<OnboardingModel> model, OnboardingPresenter& presenter,
                          std::function<void()> onComplete);
    OnboardingCoordinator(const OnboardingCoordinator&) = delete;
    OnboardingCoordinator& operator=(const OnboardingCoordinator&) = delete;
    ~OnboardingCoordinator();

    /// Shows the window, which is made where there is none, and looks for the permission from now
    /// on.
    void show();

    bool hasWindow() const { return window_ != nullptr; }
    const std::shared_ptr<OnboardingModel>& model() const { return model_; }

private:
    void complete();
    void noteClosed();

    std::shared_ptr<OnboardingModel> model_;
    OnboardingPresenter& presenter_;
    std::unique_ptr<OnboardingPresenting> window_;
    std::function<void()> onComplete_;
};

}  // namespace lumatile
