#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "tests/desktop/dragging/DropPlace.h"
#include "tests/desktop/support/DragHand.h"
#include "tests/desktop/support/HighlightWatch.h"
#include "tests/desktop/support/SnapDesktop.h"

namespace lumatile::desktop {

/// A desktop with the program, a window to drag, and the hand that drags it.
class DragTest : public OnEveryWindowManager {
protected:
    /// The parameter's window manager, as people have it who drag windows with this program.
    static SnapDesktop::Setup setupOn(const MonitorLayout& layout);

    void start(const SnapDesktop::Setup& setup);
    void start(const MonitorLayout& layout = MonitorLayout::landscape()) { start(setupOn(layout)); }

    SnapDesktop& desktop() { return *desktop_; }
    TestWindow& window() { return *window_; }
    DragHand& hand() { return *hand_; }
    HighlightWatch& highlight() { return *highlight_; }

    /// Where an area command puts a window.
    PixelRect area(std::string_view command, std::size_t monitor = 0) {
        return desktop().expected().area(defaultShortcut(command), monitor);
    }

    /// Lays the window there, active, and forgets what was asked and shown before.
    /// @return false when the program does not answer, or the highlight stays
    bool prepare(const PixelRect& frame = usualFrame);

    /// Forgets what was asked and shown before.
    void forget();

    /// Returns when the program has dealt with what the server has told it so far, and rests. Asks
    /// nothing of it, so that it can be used in the middle of a drag.
    /// @return false when it does not come to rest
    bool awaitProgram();

    /// Drags the window from `from` to the place and expects it to become what the place promises.
    void expectDrop(const DropPlace& place, std::size_t monitor,
                    const PixelRect& from = usualFrame);

    /// Whether the window gets to `wanted` and is there still when the program is done, and the
    /// window manager was asked for just that.
    testing::AssertionResult snaps(const PixelRect& wanted) {
        return snaps(window(), window().id(), wanted);
    }
    /// @param client any that can ask about the window
    testing::AssertionResult snaps(XClient& client, xcb_window_t window, const PixelRect& wanted);

    /// Whether the program has left the window alone, everything that happened so far dealt with.
    testing::AssertionResult isLeftAlone() { return isLeftAlone(window().id()); }
    testing::AssertionResult isLeftAlone(xcb_window_t window);

    static constexpr PixelRect usualFrame{500, 300, 700, 450};

private:
    std::unique_ptr<SnapDesktop> desktop_;
    std::unique_ptr<TestWindow> window_;
    std::unique_ptr<HighlightWatch> highlight_;
    std::unique_ptr<DragHand> hand_;
};

}  // namespace lumatile::desktop
