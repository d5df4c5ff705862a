#include "Lumatile/ScreenDimSurface.h"

#include "ports/DimOverlays.h"

namespace lumatile {

namespace {

// One for about every refresh of a screen at 50 Hz; a level of a third then goes up in steps that
// nobody sees.
constexpr int fadeSteps = 20;

// A level comes every two seconds. To make sure of it costs the window system a little work, on a
// machine that nobody uses.
constexpr int repeatsPerCheck = 15;

/// What is not a number darkens nothing.
double clamped(double level) {
    if (!(level > 0)) {
        return 0;
    }
    return level < 1 ? level : 1;
}

}  // namespace

ScreenDimSurface::ScreenDimSurface(DimOverlays& overlays, RunLoop& runLoop)
    : overlays_(overlays), fade_(runLoop, {fadeSeconds, fadeSteps}, [this](double opacity) {
          overlays_.setOpacity(opacity);
      }) {}

ScreenDimSurface::~ScreenDimSurface() {
    if (fade_.value() != 0) {
        overlays_.setOpacity(0);
    }
}

void ScreenDimSurface::rebuild() {
    fade_.reset();
    overlays_.rebuild();
}

void ScreenDimSurface::setLevel(double level) {
    const double target = clamped(level);
    if (target != fade_.target()) {
        repeats_ = 0;
        fade_.fadeTo(target);
    } else if (target != 0 && !fade_.isUnderWay() && ++repeats_ % repeatsPerCheck == 0) {
        // What came to lie above the overlays meanwhile, or undid a gamma ramp, is dimmed again.
        overlays_.setOpacity(target);
    }
}

}  // namespace lumatile
