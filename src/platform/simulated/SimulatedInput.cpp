#include "platform/simulated/SimulatedInput.h"

namespace lumatile {

std::optional<double> SimulatedInput::idleSeconds() {
    if (!isTelling_) {
        return std::nullopt;
    }
    constexpr double perSecond = 1e9;
    return static_cast<double>(clock_.sinceStart() - lastInput_) / perSecond;
}

void SimulatedInput::pressButton() {
    touch();
    isButtonDown_ = true;
}

void SimulatedInput::releaseButton() {
    touch();
    isButtonDown_ = false;
}

}  // namespace lumatile
