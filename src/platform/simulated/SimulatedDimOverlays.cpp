#include "platform/simulated/SimulatedDimOverlays.h"

namespace lumatile {

void SimulatedDimOverlays::rebuild() {
    frames_.clear();
    for (const PlatformScreen& screen : screens_.screens()) {
        frames_.push_back(screen.frame);
    }
    opacity_ = 0;
    ++rebuilds_;
}

void SimulatedDimOverlays::setOpacity(double opacity) {
    opacity_ = opacity;
    history_.push_back(opacity);
}

}  // namespace lumatile
