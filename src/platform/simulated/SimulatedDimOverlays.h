#pragma once

#include <cstddef>
#include <vector>

#include "geometry/Rect.h"
#include "platform/simulated/SimulatedScreens.h"
#include "ports/DimOverlays.h"

namespace lumatile {

/// Black over the screens.
class SimulatedDimOverlays final : public DimOverlays {
public:
    /// @param screens outlives it
    explicit SimulatedDimOverlays(SimulatedScreens& screens) : screens_(screens) {}

    void rebuild() override;
    void setOpacity(double opacity) override;

    /// What the overlays cover, in the space of `ScreenList`.
    const std::vector<Rect>& frames() const { return frames_; }

    std::size_t rebuilds() const { return rebuilds_; }

    /// What the user sees: 0 where there is no overlay.
    double opacity() const { return frames_.empty() ? 0 : opacity_; }

    /// Every opacity that was asked for, in order.
    const std::vector<double>& history() const { return history_; }
    void forgetHistory() { history_.clear(); }

private:
    SimulatedScreens& screens_;
    std::vector<Rect> frames_;
    std::size_t rebuilds_ = 0;
    double opacity_ = 0;
    std::vector<double> history_;
};

}  // namespace lumatile
