#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "Lumatile/widgets/Saying.h"
#include "onboarding/OnboardingModel.h"
#include "ports/OnboardingPresenting.h"
#include "ports/RunLoop.h"

class QDialog;

namespace lumatile {

/// The onboarding window. It keeps back at first: at login the program may well be there a moment
/// before the window manager, and a window that comes and goes would tell the user nothing.
class OnboardingWindowController final : public OnboardingPresenting {
public:
    struct Services {
        RunLoop& runLoop;  ///< Outlives the controller.
        Saying say;
        double patience = 0;  ///< How long the window keeps back, seconds; 0: not at all.
    };

    OnboardingWindowController(std::shared_ptr<OnboardingModel> model, Services services,
                               std::function<void()> closed);
    OnboardingWindowController(const OnboardingWindowController&) = delete;
    OnboardingWindowController& operator=(const OnboardingWindowController&) = delete;
    ~OnboardingWindowController() override;

    void show() override;

    /// Null while it keeps back.
    QDialog* window() const { return window_.get(); }

private:
    void keepBack();
    void reveal();
    void makeWindow();

    std::shared_ptr<OnboardingModel> model_;
    Services services_;
    std::function<void()> closed_;
    std::unique_ptr<RunLoopTimer> patience_;  ///< While it keeps back.
    std::unique_ptr<QDialog> window_;
};

/// Makes the onboarding windows. Only the first keeps back: any further one is shown because the
/// user asks for it.
class OnboardingWindowMaker final : public OnboardingPresenter {
public:
    explicit OnboardingWindowMaker(OnboardingWindowController::Services services)
        : services_(std::move(services)) {}

    std::unique_ptr<OnboardingPresenting> make(std::shared_ptr<OnboardingModel> model,
                                               std::function<void()> closed) override;

private:
    OnboardingWindowController::Services services_;
};

}  // namespace lumatile
