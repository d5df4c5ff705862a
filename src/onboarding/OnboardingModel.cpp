#include "onboarding/OnboardingModel.h"

namespace lumatile {

OnboardingModel::OnboardingModel(AccessibilityGrantFlow flow, const SystemTiling& tiling,
                                 Surroundings surroundings)
    : flow_(flow), tiling_(tiling), surroundings_(std::move(surroundings)) {}

void OnboardingModel::start() {
    timer_.reset();
    timer_ = repeat(pollInterval, &OnboardingModel::refresh);
    refresh();
}

void OnboardingModel::stop() {
    timer_.reset();
    settingsTimer_.reset();
}

void OnboardingModel::refresh() {
    // Whoever is told may let go of the model.
    const auto self = shared_from_this();
    const GrantState now = flow_.isTrusted(false) ? GrantState::granted
                           : didRequest_          ? GrantState::waiting
                                                  : GrantState::requesting;
    if (now == GrantState::granted) {
        stop();
        missing_.reset();
    } else if (const TrustObstacle obstacle = flow_.obstacle();
               missing_ || (obstacle != TrustObstacle::unknown && !didOpenSettings_)) {
        setMissing(obstacle);
    }
    if (now != state_) {
        state_ = now;
        tellChange();
    }
    if (now == GrantState::granted) {
        // A copy, since it may be set anew while it runs.
        if (const auto granted = onGranted) {
            granted();
        }
    }
}

void OnboardingModel::request() {
    const auto self = shared_from_this();
    didRequest_ = true;
    flow_.isTrusted(true);
    settingsTimer_.reset();
    requestTime_ = surroundings_.now();
    wasPromptSeen_ = false;
    settingsTimer_ = repeat(promptInterval, &OnboardingModel::followRequest);
}

void OnboardingModel::followRequest() {
    if (flow_.isTrusted(false)) {
        settingsTimer_.reset();
        return;
    }
    if (flow_.isPromptOnScreen()) {
        wasPromptSeen_ = true;
        return;
    }
    if (wasPromptSeen_ || surroundings_.now() - requestTime_ > promptPatience) {
        settingsTimer_.reset();
        openSettings();
    }
}

void OnboardingModel::openSettings() {
    const auto self = shared_from_this();
    didOpenSettings_ = surroundings_.open(AccessibilityGrantFlow::settingsAddress);
    setMissing(didOpenSettings_ ? std::nullopt : std::optional(flow_.obstacle()));
}

void OnboardingModel::setAdvice(std::optional<Advice> advice) {
    const auto self = shared_from_this();
    if (advice != advice_) {
        advice_ = std::move(advice);
        tellChange();
    }
}

void OnboardingModel::done() {
    const auto self = shared_from_this();
    if (const auto told = onDone) {
        told();
    }
}

void OnboardingModel::setMissing(std::optional<TrustObstacle> missing) {
    if (missing != missing_) {
        missing_ = missing;
        tellChange();
    }
}

void OnboardingModel::tellChange() const {
    if (const auto changed = changed_) {
        changed();
    }
}

std::shared_ptr<void> OnboardingModel::repeat(double seconds, void (OnboardingModel::*tick)()) {
    return surroundings_.repeat(seconds, [weak = weak_from_this(), tick] {
        if (const auto self = weak.lock()) {
            (*self.*tick)();
        }
    });
}

}  // namespace lumatile
