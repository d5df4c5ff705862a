#include "platform/wayland/IdleEstimate.h"

#include <algorithm>

namespace lumatile {

std::optional<double> IdleEstimate::seconds(double now) const {
    if (isKeptBack(now)) {
        return std::nullopt;
    }
    if (!idled_) {
        return 0;
    }
    return mayDarken_ ? length(now) : std::min(length(now), darkensAfter);
}

bool IdleEstimate::wantsToAsk(double now) const {
    if (isAsked_) {
        return false;
    }
    if (!idled_) {
        return !answered_ || now - *answered_ >= secondsBetweenQuestions;
    }
    return length(now) >= darkensAfter - lead &&
           (!mayDarken_ || now - *answered_ >= secondsBetweenDarkQuestions);
}

void IdleEstimate::noteAsked() {
    isAsked_ = true;
    arrived_.reset();
}

void IdleEstimate::noteArrived(double now) {
    if (isAsked_) {
        arrived_ = now;
    }
}

void IdleEstimate::noteAnswered(double now) {
    isAsked_ = false;
    arrived_.reset();
    answered_ = now;
    mayDarken_ = idled_.has_value();
}

void IdleEstimate::noteIdled(double now) {
    isAsked_ = false;
    arrived_.reset();
    mayDarken_ = false;
    idled_ = now;
}

void IdleEstimate::noteResumed() {
    idled_.reset();
    mayDarken_ = false;
}

double IdleEstimate::length(double now) const {
    return pauseSeconds + std::max(0.0, now - *idled_);
}

}  // namespace lumatile
