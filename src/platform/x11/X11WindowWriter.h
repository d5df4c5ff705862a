#pragma once

#include <cstdint>
#include <optional>

#include "geometry/Point.h"
#include "geometry/Rect.h"
#include "geometry/Size.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11EdgeTile.h"
#include "platform/x11/X11Monitors.h"
#include "platform/x11/X11PixelRect.h"
#include "platform/x11/X11Window.h"
#include "platform/x11/X11WindowManagerProbe.h"
#include "platform/x11/X11WindowMirror.h"

namespace lumatile {

/// Places windows through the window manager, and answers what became of it. A writing returns as
/// soon as the server reports the new geometry; when the window manager has its own idea, as soon
/// as it has dealt with the message; and at the latest after the time-out. A window manager that
/// gave no answer is written to, but not waited for, until it shows a sign of life.
class X11WindowWriter {
public:
    static constexpr double longestTimeout = 0.25;  ///< Seconds.

    /// All outlive the writer.
    /// @param longest seconds that a writing waits unless its time-out is shorter. Whoever can wait
    ///        for longer than a user is as patient with each of the window manager's steps.
    X11WindowWriter(X11Connection& connection, X11Monitors& monitors, X11WindowMirror& mirror,
                    double longest = longestTimeout);

    double longest() const { return longest_; }

    /// The outer frame in the accessibility space: what was last written, unrounded, for as long as
    /// the server still has what became of that; else the server's whole pixels.
    Rect frame(const X11Window& window);

    /// Moves the outer frame and never resizes it, whatever the fractions. A window that is
    /// maximized, be it on one axis, is taken out of that first.
    /// @param timeout seconds
    /// @return false when the window did not come to be there (full screen, gone, no answer)
    bool writePosition(xcb_window_t id, std::uint64_t serial, const Point& position,
                       double timeout);

    /// Resizes the outer frame. Its edges are rounded where the last written position puts them,
    /// and a window that is shaded or maximized is taken out of that first.
    /// @param timeout seconds
    /// @return false when the window came to be neither of that size nor of the size that its
    ///         program's rules leave of it
    bool writeSize(xcb_window_t id, std::uint64_t serial, const Size& size, double timeout);

private:
    struct Order;
    struct Wait;

    X11Window* writable(xcb_window_t id, std::uint64_t serial);
    Point rootOrigin();

    bool carryOut(const Order& order, double timeout);
    bool carryOutDrop(const Order& order, bool isTiled, double timeout);

    /// Until it has dealt with everything up to now.
    /// @return false when it has not by the time-out
    bool awaitWindowManager(double timeout);

    bool awaitAnswer(const Order& order, Wait& wait);
    static bool hasArrived(const Order& order, const X11Window& window);
    bool isConfirmed(const X11Window& window, Wait& wait);
    bool isGivenUp(const Order& order, X11Window& window, Wait& wait);
    void repeatWhereNeeded(const Order& order, const X11Window& window, Wait& wait);
    void probe(Wait& wait);
    void sendStateRemovals(const X11Window& window, bool shaded);
    X11Connection::Clock::time_point after(X11Connection::Clock::time_point from,
                                           double seconds) const;
    static X11PixelRect placing(const Order& order, const X11Window& window);
    void send(const Order& order, const X11Window& window, Wait& wait);
    static void settle(const Order& order, X11Window& window);

    X11Connection& connection_;
    X11Monitors& monitors_;
    X11WindowMirror& mirror_;
    double longest_;  // Seconds.
    X11Connection::Clock::duration settlingTime_;
    X11Connection::Clock::duration probeTime_;
    X11WindowManagerProbe probe_;
    X11EdgeTile tile_;
    xcb_atom_t moveResize_;
    xcb_atom_t state_;
    xcb_atom_t maximizedHorizontally_;
    xcb_atom_t maximizedVertically_;
    xcb_atom_t shaded_;
};

}  // namespace lumatile
