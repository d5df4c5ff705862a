#pragma once

#include <memory>

#include "tests/desktop/support/DesktopObserver.h"
#include "tests/desktop/support/OuterRectangles.h"
#include "tests/desktop/support/TestWindow.h"
#include "tests/desktop/support/session/SessionProgram.h"
#include "tests/desktop/support/session/SessionWindow.h"

namespace lumatile::desktop {

/// A window on a private X server: one of this process, or a program's.
class X11SessionWindow : public SessionWindow {
public:
    struct Desk {
        std::string display;
        DesktopObserver* observer = nullptr;  ///< Outlives the windows.
        /// Whether a window that the window manager has tiled by itself goes nowhere before it was
        /// maximized and restored.
        bool isPutOutOfItsTile = false;
    };

    X11SessionWindow(Desk desk, std::unique_ptr<TestWindow> window);
    /// Somebody else's.
    X11SessionWindow(Desk desk, xcb_window_t window, const SessionProgram& program);

    PixelRect frame() override;
    bool isAt(const PixelRect& wanted) override { return mayBecome(frame(), wanted); }
    bool mayBecome(const PixelRect& frame, const PixelRect& wanted) const override;
    bool hasSteps() const override { return columnWidth_ > 1 || rowHeight_ > 1; }
    void place(const PixelRect& wanted) override;
    void activate() override;
    bool isActive() override;
    void askForFocus() override;
    void enter(SpecialState state) override;
    bool isIn(SpecialState state) override;
    std::optional<PixelRect> asked(const PixelRect& before) override;
    std::size_t timesAsked() override;
    std::vector<std::string> otherThanPlaces() override;
    std::vector<PixelRect> frames() override;
    std::vector<PixelRect> sizes() override;
    void forgetFrames() override;

private:
    bool hasState(const char* name);
    void setStates(const std::vector<std::string>& states, bool on);
    void minimize();

    Desk desk_;
    std::unique_ptr<TestWindow> own_;  // Empty for a program's.
    xcb_window_t id_;
    int columnWidth_ = 1;
    int rowHeight_ = 1;
    std::unique_ptr<OuterRectangles> seen_;  // From the first `forgetFrames` on.
};

}  // namespace lumatile::desktop
