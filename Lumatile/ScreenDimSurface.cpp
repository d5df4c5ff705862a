#include "Lumatile/ScreenDimSurface.h"

#include "Lumatile/DimOverlays.h"

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
    : overlays_(overlays), runLoop_(runLoop) {}

ScreenDimSurface::~ScreenDimSurface() {
    if (opacity_ != 0) {
        overlays_.setOpacity(0);
    }
}

void ScreenDimSurface::rebuild() {
    fade_.reset();
    opacity_ = 0;
    target_ = 0;
    overlays_.rebuild();
}

void ScreenDimSurface::setLevel(double level) {
    const double target = clamped(level);
    if (target == target_) {
        // What came to lie above the overlays meanwhile, or undid a gamma ramp, is dimmed again.
        if (target != 0 && !fade_ && ++repeats_ % repeatsPerCheck == 0) {
            overlays_.setOpacity(opacity_);
        }
        return;
    }
    target_ = target;
    repeats_ = 0;
    start_ = opacity_;
    step_ = 0;
    fade_ = runLoop_.repeat(fadeSeconds / fadeSteps, [this] { advance(); });
}

void ScreenDimSurface::advance() {
    ++step_;
    const bool isOver = step_ >= fadeSteps;
    opacity_ = isOver ? target_ : start_ + (target_ - start_) * step_ / fadeSteps;
    overlays_.setOpacity(opacity_);
    if (isOver) {
        fade_.reset();
    }
}

}  // namespace lumatile
