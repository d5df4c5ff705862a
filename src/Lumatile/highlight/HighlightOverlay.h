#pragma once

#include <QWidget>

#include <memory>

#include "Lumatile/highlight/HighlightFade.h"
#include "Lumatile/highlight/HighlightView.h"
#include "drag_snap/DragSnapHighlighting.h"
#include "ports/RunLoop.h"

namespace lumatile {

class HighlightSurface;
class ScreenList;
class Translucency;

/// The highlight of a drag's target: above everything, on every virtual desktop, never focused,
/// never in the way of the mouse. A window, or the session's own surface where it has one. Needs
/// the toolkit's application object.
class HighlightOverlay final : public DragSnapHighlighting {
public:
    /// All of them outlive the overlay.
    /// @param surface nothing where the session has none
    HighlightOverlay(ScreenList& screens, Translucency& translucency, RunLoop& runLoop,
                     HighlightSurface* surface = nullptr);

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

    void showOnSurface(const Rect& frame);
    void showWindow(const Rect& frame);
    void setSolid(bool isSolid);
    void makeWindow();
    void orderOut();
    void release();
    void releaseWindow();
    void cutOut();
    Size cellPitch(const Rect& frame);
    void setAlpha(double alpha);

    ScreenList& screens_;
    Translucency& translucency_;
    RunLoop& runLoop_;
    HighlightSurface* surface_;
    bool isOnSurface_ = false;
    Window window_;
    HighlightView view_{&window_};
    HighlightView::Drawn cutOut_;         // What the window's shape was made of last; empty before.
    std::unique_ptr<RunLoopTimer> rest_;  // Runs while it is hidden and kept.
    HighlightFade fade_;
};

}  // namespace lumatile
