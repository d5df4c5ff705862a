#pragma once

#include <string>

#include "tests/desktop/support/PixelRect.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// What a user, and another program, sees of the running program's highlight.
class HighlightWatch : public XClient {
public:
    explicit HighlightWatch(const std::string& display);

    /// Waits until it is on the screen, over exactly `wanted` (root coordinates).
    bool waitUntilAt(const PixelRect& wanted);
    bool waitUntilHidden();

    bool isShown();

    /// The window that is shown, else none. The program makes a new one each time.
    xcb_window_t window();

    PixelRect frame();

    /// Whether the window manager has nothing to do with it.
    bool isOverrideRedirect();

    /// Whether clicks at a place of the root go past it.
    /// @return false also when the pointer is somewhere else
    bool letsThrough(int x, int y);

    /// How often one appeared since the last `forget`.
    int timesShown();
    void forget();

protected:
    void handle(const xcb_generic_event_t& event) override;

private:
    bool isHighlight(xcb_window_t window);

    int timesShown_ = 0;
};

}  // namespace lumatile::desktop
