#pragma once

#include "platform/simulated/SimulatedClock.h"
#include "ports/InputState.h"

namespace lumatile {

/// The user's hands on keyboard and pointer. The last input before the desktop started was its
/// start.
class SimulatedInput final : public InputState {
public:
    /// @param clock outlives it
    explicit SimulatedInput(const SimulatedClock& clock) : clock_(clock) {}

    std::optional<double> idleSeconds() override;
    void expectDimming(std::optional<double> idleThreshold) override { dimsAfter_ = idleThreshold; }
    bool isDragButtonDown() override { return isButtonDown_; }

    /// A key, a scroll, a movement of the pointer.
    void touch() { lastInput_ = clock_.sinceStart(); }

    void pressButton();
    void releaseButton();

    /// Whether the session tells how long there has been no input.
    void setTelling(bool telling) { isTelling_ = telling; }

    /// Seconds without input after which the program has said that it will darken the screens.
    std::optional<double> dimsAfter() const { return dimsAfter_; }

private:
    const SimulatedClock& clock_;
    SimulatedClock::Nanoseconds lastInput_ = 0;
    bool isButtonDown_ = false;
    bool isTelling_ = true;
    std::optional<double> dimsAfter_;
};

}  // namespace lumatile
