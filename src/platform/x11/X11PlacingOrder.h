#pragma once

#include "geometry/Point.h"
#include "geometry/Rect.h"
#include "platform/x11/X11PixelRect.h"
#include "platform/x11/X11Window.h"
#include "platform/x11/X11WindowRequest.h"

namespace lumatile {

/// What a window is to become, in the server's whole pixels.
struct X11PlacingOrder {
    Rect frame;           ///< Unrounded, accessibility space.
    Point origin;         ///< Where that space begins on the root.
    X11PixelRect target;  ///< The outer rectangle; its size is the present one where none is asked.
    bool withSize = false;
    bool leavesState = false;  ///< Out of maximized, or with a size out of shaded, first.

    /// The message that brings the window there, by the decoration that it has now.
    X11PlaceRequest request(const X11Window& window) const;

    /// Whether the window is what was asked for, or what its program's rules leave of the size.
    bool isMetBy(const X11Window& window) const;

    /// What is to be read of the window from now on, where it is what came of the order: the
    /// unrounded number for each that was met, the server's for the others.
    X11WrittenFrame outcome(const X11Window& window) const;

    /// The same for a window that has yet to answer: what was asked, until it changes.
    X11WrittenFrame expectation(const X11Window& window) const;
};

}  // namespace lumatile
