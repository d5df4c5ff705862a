#pragma once

#include "Lumatile/Fade.h"
#include "oled_protection/DimSurface.h"

namespace lumatile {

class DimOverlays;

/// The overlays of all screens as one surface that fades from level to level. Clear once it is
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
    DimOverlays& overlays_;
    int repeats_ = 0;
    Fade fade_;
};

}  // namespace lumatile
