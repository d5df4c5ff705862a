#include "Lumatile/OnboardingCoordinator.h"

#include <utility>

namespace lumatile {

OnboardingCoordinator::OnboardingCoordinator(std::shared_ptr<OnboardingModel> model,
                                             OnboardingPresenter& presenter,
                                             std::function<void()> onComplete)
    : model_(std::move(model)), presenter_(presenter), onComplete_(std::move(onComplete)) {}

OnboardingCoordinator::~OnboardingCoordinator() {
    // Others may hold the model for longer.
    model_->stop();
    model_->onDone = nullptr;
}

void OnboardingCoordinator::show() {
    if (!window_) {
        model_->onDone = [weak = weak_from_this()] {
            if (const auto self = weak.lock()) {
                self->complete();
            }
        };
        window_ = presenter_.make(model_, [weak = weak_from_this()] {
            if (const auto self = weak.lock()) {
                self->noteClosed();
            }
        });
    }
    if (!model_->isPolling()) {
        model_->start();
    }
    // The first look may have found the permission, and whoever was told may have closed it.
    if (window_) {
        window_->show();
    }
}

void OnboardingCoordinator::complete() {
    if (!window_) {
        return;
    }
    // Out of the field first, so that what runs meanwhile cannot complete twice.
    const auto window = std::move(window_);
    if (onComplete_) {
        onComplete_();
    }
}

void OnboardingCoordinator::noteClosed() {
    model_->stop();
    if (model_->state() == GrantState::granted) {
        // Nothing is left to be done in it.
        complete();
    } else {
        window_.reset();
    }
}

}  // namespace lumatile
