#pragma once

#include "platform/x11/X11Extents.h"
#include "platform/x11/X11PixelRect.h"
#include "platform/x11/X11SizeHints.h"

namespace lumatile {

/// The rectangle that the user sees of a window: the client with the window manager's decoration,
/// less the shadow that a client-side decoration draws inside its own window.
struct X11WindowFrame {
    X11PixelRect client;    ///< The client window in root coordinates.
    X11Extents decoration;  ///< What the window manager adds (`_NET_FRAME_EXTENTS`).
    X11Extents shadow;      ///< What the client draws around itself (`_GTK_FRAME_EXTENTS`).

    bool operator==(const X11WindowFrame&) const = default;

    /// The outer rectangle: what is seen of the window.
    X11PixelRect outer() const;

    /// The client rectangle at which the outer one is `outer`; at least one pixel wide and high.
    X11PixelRect clientFor(const X11PixelRect& outer) const;

    /// The outer rectangle that the program's rules for its size leave of `outer`: same origin.
    X11PixelRect constrained(const X11PixelRect& outer, const X11SizeHints& hints) const;

    /// What a window manager is told for a client at `target`: the corner of its decoration, and
    /// the client's size.
    X11PixelRect placing(const X11PixelRect& target) const;
};

}  // namespace lumatile
