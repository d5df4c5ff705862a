#pragma once

#include <QWidget>

#include <memory>

#include "Lumatile/highlight/HighlightFade.h"
#include "Lumatile/highlight/HighlightView.h"
#include "drag_snap/DragSnapHighlighting.h"
#include "ports/RunLoop.h"

namespace lumatile {

class ScreenList;
class Translucency;

/// The highlight of a drag's target as a window: above everything, on every virtual desktop, never
/// focused, never in the way of the mouse. Needs the toolkit's application object.
class HighlightOverlay final : public DragSnapHighlighting {
public:
    /// All of them outlive the overlay.
    HighlightOverlay(ScreenList& screens, Translucency& translucency, RunLoop& runLoop);

    /// A frame that no window could have shows nothing.
    void show(const Rect& frame) override;
    void hide() override;

    const QWidget& window() const { return window_; }
    const HighlightView& view() const { return view_; }

private:
    class Window final : public QWidget {
    public:
        /// Gives back what the window system and the picture take: megabytes on a large screen.
        void release() { destroy(); }
    };

    void setSolid(bool isSolid);
    void makeWindow();
    void orderOut();
    void releaseWindow();
    void cutOut();
    Size cellPitch(const Rect& frame);
    void setAlpha(double alpha);

    ScreenList& screens_;
    Translucency& translucency_;
    RunLoop& runLoop_;
    Window window_;
    HighlightView view_{&window_};
    HighlightView::Drawn cutOut_;         // What the window's shape was made of last; empty before.
    std::unique_ptr<RunLoopTimer> rest_;  // Runs while the window is hidden and still there.
    HighlightFade fade_;
};

}  // namespace lumatile
