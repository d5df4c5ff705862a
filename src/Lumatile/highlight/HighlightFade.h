#pragma once

#include <functional>

#include "Lumatile/Fade.h"

namespace lumatile {

/// Fades something in and out. Either way can be taken at any moment, from wherever the other one
/// has come.
class HighlightFade {
public:
    /// Seconds for a fade, however far it has to go: seen as a movement, not waited for.
    static constexpr double seconds = 0.12;

    /// Clear at first.
    /// @param runLoop outlives the fade
    /// @param apply called with each new alpha, 0 to 1
    /// @param cleared called when a fade out has come to its end
    HighlightFade(RunLoop& runLoop, std::function<void(double)> apply,
                  std::function<void()> cleared);

    /// Whether anybody sees what lies between in and out. Where nothing is blended a way takes as
    /// long, and its alpha changes once, at its end.
    bool isBlended = true;

    /// Nothing happens when it is in, or on its way.
    void fadeIn() { fade_.fadeTo(1, isBlended); }

    /// Nothing happens when it is out, or on its way.
    void fadeOut() { fade_.fadeTo(0, isBlended); }

    double alpha() const { return fade_.value(); }

private:
    void apply(double alpha);

    std::function<void(double)> apply_;
    std::function<void()> cleared_;
    Fade fade_;
};

}  // namespace lumatile
