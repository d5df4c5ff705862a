#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>

#include <xcb/xcb.h>

#include "base/Lifeline.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11PixelRect.h"
#include "platform/x11/X11Window.h"
#include "platform/x11/X11WindowMirror.h"

namespace lumatile {

/// The tile that a window manager puts a window into on its own when it is dropped at an edge of
/// the screen. In there it takes no messages about its place. kwin lets a window go when it is
/// maximized and restored (`X11PlacingPlanner::untiling`); for metacity no such message is known.
class X11EdgeTile {
public:
    /// Both outlive this. That a button was let go is known only while somebody on this connection
    /// watches the raw events of the mouse, as whoever drops windows does.
    X11EdgeTile(X11Connection& connection, X11WindowMirror& mirror);
    X11EdgeTile(const X11EdgeTile&) = delete;
    X11EdgeTile& operator=(const X11EdgeTile&) = delete;
    ~X11EdgeTile() = default;

    /// Whether a button was let go in this very turn of the run loop, in which a drop is carried
    /// out, so that the window manager may be tiling the window that is written now, and in a way
    /// that a message can undo. True once for each release.
    bool takeDrop();

    /// The outer rectangle that `window` had when the button was let go, for as long as `takeDrop`
    /// is to be true: what it is by now may be the tile already, and says nothing of the drag.
    /// Where it was not known at that moment, the size is the last one that was known. Absent where
    /// the window has not been tiled since.
    std::optional<X11PixelRect> outerAtRelease(const X11Window& window);

    /// Whether a window that was `before` and is `now` has been given its size by a window manager:
    /// whoever resizes it by hand leaves one of two opposite edges where it was.
    static bool isTiled(const X11PixelRect& before, const X11PixelRect& now);

private:
    /// What was known of a window when the button was let go.
    struct Known {
        std::uint64_t serial = 0;
        X11PixelRect outer;
        bool isFresh = false;  ///< Not from before the last that was heard of it.
    };

    void note(const xcb_generic_event_t& event);
    void noteRelease();
    bool isUndoable();

    X11Connection& connection_;
    X11WindowMirror& mirror_;
    std::uint8_t inputExtension_ = 0;
    bool isReleased_ = false;
    std::unordered_map<xcb_window_t, Known> atRelease_;

    // The check window of the window manager that was looked at last, and what was seen.
    xcb_window_t known_ = XCB_WINDOW_NONE;
    bool isKnownUndoable_ = false;

    X11Connection::Subscription subscription_;
    Lifeline lifeline_;
};

}  // namespace lumatile
