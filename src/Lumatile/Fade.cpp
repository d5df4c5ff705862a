#include "Lumatile/Fade.h"

#include <algorithm>
#include <utility>

namespace lumatile {

Fade::Fade(RunLoop& runLoop, const Pace& pace, std::function<void(double)> apply)
    : runLoop_(runLoop), pace_(pace), apply_(std::move(apply)) {}

void Fade::fadeTo(double target, bool isGradual) {
    if (target == target_) {
        return;
    }
    target_ = target;
    start_ = value_;
    startTime_ = runLoop_.now();
    step_ = 0;
    steps_ = isGradual ? pace_.steps : 1;
    timer_ = runLoop_.repeat(pace_.seconds / steps_, [this] { advance(); });
}

void Fade::reset() {
    timer_.reset();
    value_ = 0;
    target_ = 0;
}

void Fade::advance() {
    ++step_;
    // By the clock, since ticks are missed while a large window is drawn; by the steps where they
    // are further, since the clock may be set back.
    const double progress = std::max(static_cast<double>(step_) / steps_,
                                     (runLoop_.now() - startTime_) / pace_.seconds);
    const bool isOver = progress >= 1;
    value_ = isOver ? target_ : start_ + (target_ - start_) * progress;
    if (isOver) {
        timer_.reset();
    }
    apply_(value_);
}

}  // namespace lumatile
