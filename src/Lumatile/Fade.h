#pragma once

#include <functional>
#include <memory>

#include "ports/RunLoop.h"

namespace lumatile {

/// A value that moves to its target in small steps, starting from where it is.
class Fade {
public:
    struct Pace {
        double seconds = 0;  ///< For any way, however far.
        int steps = 1;       ///< In so many steps.
    };

    /// At 0 first.
    /// @param runLoop outlives the fade
    /// @param apply called with each new value
    Fade(RunLoop& runLoop, const Pace& pace, std::function<void(double)> apply);

    /// Nothing happens when it is there, or on its way.
    /// @param isGradual false: in one step, which comes when the time of a fade is over
    void fadeTo(double target, bool isGradual = true);

    /// Is back at 0 at once, without a word.
    void reset();

    double value() const { return value_; }
    double target() const { return target_; }
    bool isUnderWay() const { return timer_ != nullptr; }

private:
    void advance();

    RunLoop& runLoop_;
    Pace pace_;
    std::function<void(double)> apply_;
    double value_ = 0;
    double start_ = 0;
    double target_ = 0;
    double startTime_ = 0;
    int step_ = 0;
    int steps_ = 1;  // Of the way that was taken last.
    std::unique_ptr<RunLoopTimer> timer_;
};

}  // namespace lumatile
