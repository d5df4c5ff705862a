#include "Lumatile/highlight/HighlightFade.h"

#include <utility>

namespace lumatile {

namespace {

// One for about every refresh of a screen at 60 Hz.
constexpr int steps = 8;

}  // namespace

HighlightFade::HighlightFade(RunLoop& runLoop, std::function<void(double)> apply,
                             std::function<void()> cleared)
    : apply_(std::move(apply)),
      cleared_(std::move(cleared)),
      fade_(runLoop, {seconds, steps}, [this](double alpha) { this->apply(alpha); }) {}

void HighlightFade::apply(double alpha) {
    apply_(alpha);
    if (!fade_.isUnderWay() && alpha == 0) {
        cleared_();
    }
}

}  // namespace lumatile
