#pragma once

#include <cstdint>

#include <xcb/xcb.h>

#include "geometry/Point.h"
#include "geometry/Rect.h"
#include "platform/windows/WriteTimeouts.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11EdgeTile.h"
#include "platform/x11/X11Monitors.h"
#include "platform/x11/X11PlacingPlanner.h"
#include "platform/x11/X11PlacingWait.h"
#include "platform/x11/X11Window.h"
#include "platform/x11/X11WindowManagerProbe.h"
#include "platform/x11/X11WindowMirror.h"
#include "platform/x11/X11WindowRequests.h"
#include "windows/PlacingWish.h"

namespace lumatile {

/// Places windows through the window manager, and answers what became of it. A window manager that
/// gave no answer is written to, but not waited for, until it shows a sign of life.
class X11WindowWriter {
public:
    static constexpr double longestTimeout = WriteTimeouts::longest;  ///< Seconds.

    /// All outlive the writer.
    /// @param longest seconds that a writing waits unless its time-out is shorter. Whoever can wait
    ///        for longer than a user is as patient with each of the window manager's steps.
    X11WindowWriter(X11Connection& connection, X11Monitors& monitors, X11WindowMirror& mirror,
                    double longest = longestTimeout);

    double longest() const { return longest_; }

    /// The outer frame in the accessibility space: what was last written, unrounded, for as long as
    /// the server still has what became of that; else the server's whole pixels.
    Rect frame(const X11Window& window);

    /// Moves the outer frame, resizes it, or both in one change. A window that is only moved is
    /// never resized, whatever the fractions; one that is only resized has its edges rounded where
    /// the last written position puts them. A window that is maximized, be it on one axis, is taken
    /// out of that first, and out of shaded when it is resized.
    /// @param timeout seconds
    /// @return false when the window did not come to be there, or to the size that its program's
    ///         rules leave (full screen, gone, no answer, absurd numbers)
    bool write(xcb_window_t id, std::uint64_t serial, const PlacingWish& wish, double timeout);

private:
    Point rootOrigin() { return monitors_.toRoot(Point{}); }
    X11Window* writable(xcb_window_t id, std::uint64_t serial);

    bool writeNow(X11Window& window, const PlacingWish& wish, double timeout);
    bool writeDrop(X11Window& window, const PlacingWish& wish, bool isTiled, double timeout);
    bool carryOut(X11Window& window, const X11PlacingPlan& plan, double timeout);

    /// Until it has dealt with everything up to now.
    /// @return false when it has not by the time-out
    bool awaitWindowManager(double timeout);
    X11Connection::Clock::duration bounded(double timeout) const;

    X11Connection& connection_;
    X11Monitors& monitors_;
    X11WindowMirror& mirror_;
    double longest_;  // Seconds.
    X11PlacingWait::Patience patience_;
    X11WindowManagerProbe probe_;
    X11WindowRequests requests_;
    X11EdgeTile tile_;
};

}  // namespace lumatile
