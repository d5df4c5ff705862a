#include "Lumatile/HighlightFade.h"

#include <algorithm>
#include <utility>

namespace lumatile {

namespace {

// One for about every refresh of a screen at 60 Hz.
constexpr int steps = 8;

}  // namespace

HighlightFade::HighlightFade(RunLoop& runLoop, std::function<void(double)> apply,
                             std::function<void()> cleared)
    : runLoop_(runLoop), apply_(std::move(apply)), cleared_(std::move(cleared)) {}

void HighlightFade::fadeTo(double target) {
    if (target == target_) {
        return;
    }
    target_ = target;
    start_ = alpha_;
    startTime_ = runLoop_.now();
    step_ = 0;
    timer_ = runLoop_.repeat(seconds / steps, [this] { advance(); });
}

void HighlightFade::advance() {
    ++step_;
    // By the clock, since ticks are missed while a large window is drawn; by the steps where they
    // are further, since the clock may be set back.
    const double progress =
        std::max(static_cast<double>(step_) / steps, (runLoop_.now() - startTime_) / seconds);
    const bool isOver = progress >= 1;
    alpha_ = isOver ? target_ : start_ + (target_ - start_) * progress;
    if (isOver) {
        timer_.reset();
    }
    apply_(alpha_);
    if (isOver && target_ == 0) {
        cleared_();
    }
}

}  // namespace lumatile
