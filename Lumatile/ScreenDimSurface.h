#pragma once

#include <memory>

#include "Lumatile/RunLoop.h"
#include "oled_protection/DimSurface.h"

namespace lumatile {

class DimOverlays;

/// The overlays over all screens as one surface that fades from level to level. Clear once it is
/// gone.
class ScreenDimSurface final : public DimSurface {
public:
    /// Seconds from one level to the next: slow enough not to flash, quick enough that whoever
    /// comes back does not wait.
    static constexpr double fadeSeconds = 0.4;

    /// Both outlive the surface.
    ScreenDimSurface(DimOverlays& overlays, RunLoop& runLoop);
    ScreenDimSurface(const ScreenDimSurface&) = delete;
    ScreenDimSurface& operator=(const ScreenDimSurface&) = delete;
    ~ScreenDimSurface() override;

    /// Makes the overlays for the screens that there are now, clear.
    void rebuild();

    /// Fades to the level, from wherever a fade under way has come. The same level again makes sure
    /// of it, now and then.
    void setLevel(double level) override;

private:
    void advance();

    DimOverlays& overlays_;
    RunLoop& runLoop_;
    double opacity_ = 0;
    double start_ = 0;
    double target_ = 0;
    int step_ = 0;
    int repeats_ = 0;
    std::unique_ptr<RunLoopTimer> fade_;
};

}  // namespace lumatile
