#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tests/desktop/support/Deadline.h"
#include "tests/desktop/support/DefaultShortcuts.h"
#include "tests/desktop/support/ExpectedFrame.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/MonitorLayout.h"
#include "tests/desktop/support/Pointer.h"
#include "tests/desktop/support/PrivateSession.h"
#include "tests/desktop/support/ScreenColors.h"
#include "tests/desktop/support/session/SessionHighlight.h"
#include "tests/desktop/support/session/SessionProgram.h"
#include "tests/desktop/support/session/SessionWindow.h"

namespace lumatile::desktop {

/// A private desktop with the program running on it, as tables of cases know it: whatever the
/// window system, cases are written against this.
class SessionDesk : public Pointer {
public:
    struct Setup {
        MonitorLayout layout = MonitorLayout::landscape();
        /// Monitor that has a panel along its lower edge.
        std::optional<std::size_t> panel = std::nullopt;
        LumatileProcess::Settings settings{};
        /// Whether windows are dragged: what the desktop tiles by itself at an edge and cannot be
        /// undone is off then.
        bool isForDrags = false;
        /// Whether it is looked at, `colorAt`: overlays are translucent then.
        bool isSeen = false;
        /// Whether windows are composited where the desktop can do without.
        bool isComposited = false;
    };

    static constexpr int panelHeight = 37;  ///< Odd, so that halves do not come out even.

    virtual const ExpectedFrame& expected() const = 0;
    virtual LumatileProcess& program() = 0;
    virtual PrivateSession& session() = 0;

    /// A new window of one of the session's kinds, active, somewhere near `area`.
    /// @param kind of `SessionKind::windowKinds`
    virtual std::unique_ptr<SessionWindow> open(const std::string& kind, const PixelRect& area) = 0;

    /// Two windows of one program; the second is active.
    virtual std::array<std::unique_ptr<SessionWindow>, 2> openPair() = 0;

    /// A window of a type, shown; whether it is active is up to the desktop.
    /// @param type of `SessionKind::placedTypes` or `leftTypes`
    virtual std::unique_ptr<SessionWindow> openTyped(const std::string& type) = 0;

    /// For desks that have one.
    virtual SessionWindow& panel() = 0;

    /// A real program, its window shown and active.
    /// @param program of `SessionKind::programs`
    /// @throws DesktopError when it shows none
    virtual RunningProgram openProgram(const SessionProgram& program) = 0;

    /// Presses the default shortcut of the command.
    virtual void press(const DefaultShortcut& shortcut) = 0;
    void press(std::string_view command) { press(defaultShortcut(command)); }

    /// Turns a lock on or off by pressing its key, where it is not so already.
    /// @return false for a key that locks nothing
    virtual bool setLock(std::uint8_t lockKey, bool on) = 0;

    /// Presses and releases a key.
    virtual void pressKey(std::uint8_t key) = 0;

    /// Changes the monitors, and waits until the desktop has followed, as far as it says so. The
    /// expectations are those of the new ones from then on.
    virtual void arrange(const MonitorLayout& layout) = 0;

    /// Takes one monitor away and leaves everything else as it is, as far as the desktop can. The
    /// expectations stay.
    virtual void unplug(std::size_t monitor) = 0;

    /// What the screens show at a place, overlays included. For desks that are seen.
    virtual ScreenColor colorAt(int x, int y) = 0;

    /// What a user sees of the program's highlight.
    virtual SessionHighlight& highlight() = 0;

    /// Waits until there is something to take at a place: what a window is resized by may come a
    /// moment later than the window.
    virtual bool awaitSomethingAt(int /*x*/, int /*y*/) { return true; }

    /// How far outside of a frame's edge a window is taken to be resized, pixels; negative: inside.
    virtual int resizedAt() const = 0;

    /// Forgets what the program asked for so far.
    virtual void forget() = 0;

    /// Returns when the window system has dealt with everything that was done on it.
    virtual void roundTrip() = 0;

    /// Returns when windows are where everything that was done before has put them.
    virtual void awaitWindowManager() = 0;

    using Pointer::waitUntil;
    bool waitUntil(const std::function<bool()>& condition) {
        return waitUntil(condition, Deadline::usual());
    }

    /// Returns when the program has dealt with every shortcut that was pressed before, and with the
    /// mouse. It snaps a window of our own.
    /// @return false when it does not answer
    virtual bool settle() = 0;
    /// The same, and gives the focus back to `window`.
    bool settle(SessionWindow& window);

    /// Returns when the program has dealt with what the window system has told it so far, and
    /// rests. Asks nothing of it, so that it can be used in the middle of a drag.
    /// @return false when it does not come to rest
    bool awaitProgram();

    /// Whether the window gets to `wanted` in time; a failure says where it is instead.
    testing::AssertionResult reaches(SessionWindow& window, const PixelRect& wanted);

    /// Ends the program.
    /// @return what is wrong with how it ended; empty when nothing is
    std::string endProgram();
};

}  // namespace lumatile::desktop
