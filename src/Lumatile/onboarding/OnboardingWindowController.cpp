#include "Lumatile/onboarding/OnboardingWindowController.h"

#include <QSize>

#include <utility>

#include "Lumatile/onboarding/OnboardingView.h"
#include "Lumatile/widgets/PromptDialog.h"
#include "Lumatile/widgets/WindowForeground.h"
#include "onboarding/OnboardingTexts.h"

namespace lumatile {

namespace {

constexpr QSize contentPoints(560, 480);

}  // namespace

OnboardingWindowController::OnboardingWindowController(std::shared_ptr<OnboardingModel> model,
                                                       Services services,
                                                       std::function<void()> closed)
    : model_(std::move(model)), services_(std::move(services)), closed_(std::move(closed)) {}

OnboardingWindowController::~OnboardingWindowController() {
    if (patience_) {
        model_->onChange(nullptr);
    }
}

void OnboardingWindowController::show() {
    if (!window_ && !patience_ && services_.patience > 0) {
        keepBack();
    } else {
        reveal();
    }
}

void OnboardingWindowController::keepBack() {
    const auto endUnseen = [this] {
        if (model_->state() == GrantState::granted) {
            // Takes this object along.
            const auto model = model_;
            model->done();
        }
    };
    patience_ = services_.runLoop.repeat(services_.patience, [this] { reveal(); });
    model_->onChange(endUnseen);
    endUnseen();
}

void OnboardingWindowController::reveal() {
    patience_.reset();
    if (!window_) {
        makeWindow();
    }
    bringToFront(*window_);
}

void OnboardingWindowController::makeWindow() {
    window_ = makePromptDialog(services_.say(OnboardingTexts::windowTitle),
                               new OnboardingView(model_, services_.runLoop, services_.say),
                               contentPoints, services_.runLoop, closed_);
}

std::unique_ptr<OnboardingPresenting> OnboardingWindowMaker::make(
    std::shared_ptr<OnboardingModel> model, std::function<void()> closed) {
    const double patience = std::exchange(services_.patience, 0);
    return std::make_unique<OnboardingWindowController>(
        std::move(model),
        OnboardingWindowController::Services{services_.runLoop, services_.say, patience},
        std::move(closed));
}

}  // namespace lumatile
