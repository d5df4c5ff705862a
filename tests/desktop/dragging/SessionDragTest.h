#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string_view>

#include "tests/desktop/dragging/DropPlace.h"
#include "tests/desktop/support/PointerHand.h"
#include "tests/desktop/support/session/SessionKinds.h"

namespace lumatile::desktop {

/// A desktop of any session with the program, a window to drag, and the hand that drags it.
class SessionDragTest : public OnEverySession {
protected:
    void start(const MonitorLayout& layout = MonitorLayout::landscape(),
               const std::optional<std::size_t>& panel = std::nullopt);

    SessionDesk& desk() { return *desk_; }
    SessionWindow& window() { return *window_; }
    PointerHand& hand() { return *hand_; }
    SessionHighlight& highlight() { return desk().highlight(); }

    /// The window that the rest is about from now on.
    void use(std::unique_ptr<SessionWindow> window) { window_ = std::move(window); }

    /// Where an area command puts a window.
    PixelRect area(std::string_view command, std::size_t monitor = 0) {
        return desk().expected().area(defaultShortcut(command), monitor);
    }

    /// Lays the window there, active, and forgets what was asked and shown before.
    /// @return false when the program does not answer, or the highlight stays
    bool prepare(const PixelRect& frame = usualFrame);

    /// Takes a window by its title bar.
    /// @return false when it does not follow
    bool grip() { return grip(window()); }
    bool grip(SessionWindow& window);

    /// Whether the window gets to `wanted` and is there still when the program is done, and the
    /// window system was asked for just that.
    testing::AssertionResult snaps(const PixelRect& wanted);

    /// Whether the program has left the window alone, everything that happened so far dealt with.
    testing::AssertionResult isLeftAlone() { return isLeftAlone(window()); }
    testing::AssertionResult isLeftAlone(SessionWindow& window);

    /// Drags the window from `from` to the place and expects it to become what the place promises.
    void expectDrop(int x, int y, const PixelRect& becomes, const PixelRect& from = usualFrame);

    /// The ordinary case, after an unusual one.
    void expectNextDragSnaps() { expectDrop(1917, 500, area("right")); }

    static constexpr PixelRect usualFrame{500, 300, 700, 450};

private:
    std::unique_ptr<SessionDesk> desk_;
    std::unique_ptr<SessionWindow> window_;
    std::unique_ptr<PointerHand> hand_;
};

}  // namespace lumatile::desktop
