#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11PixelRect.h"
#include "platform/x11/X11Window.h"
#include "platform/x11/X11WindowMirror.h"

namespace lumatile {

/// The tile that a window manager puts a window into on its own when it is dropped at an edge of
/// the screen. In there it takes no messages about its place. kwin lets a window go when it is
/// maximized and restored; for metacity no such message is known.
class X11EdgeTile {
public:
    /// Both outlive this. That a button was let go is known only while somebody on this connection
    /// watches the raw events of the mouse, as whoever drops windows does.
    X11EdgeTile(X11Connection& connection, X11WindowMirror& mirror);
    X11EdgeTile(const X11EdgeTile&) = delete;
    X11EdgeTile& operator=(const X11EdgeTile&) = delete;
    ~X11EdgeTile();

    /// Whether a button was let go in this very turn of the run loop, in which a drop is carried
    /// out, so that the window manager may be tiling the window that is written now, and in a way
    /// that a message can undo. True once for each release.
    bool takeDrop();

    /// The outer rectangle that `window` had when the button was let go, for as long as `takeDrop`
    /// is to be true: what it is by now may be the tile already, and says nothing of the drag.
    /// Absent when the window was not in front, and where no tile is to be expected.
    std::optional<X11PixelRect> outerAtRelease(const X11Window& window);

    /// Asks for the window to be let go of. What it is asked for next it does.
    void undo(xcb_window_t window);

private:
    void note(const xcb_generic_event_t& event);
    void noteRelease();
    bool isUndoable();

    X11Connection& connection_;
    X11WindowMirror& mirror_;
    std::uint8_t inputExtension_ = 0;
    bool isReleased_ = false;

    /// The window in front when the button was let go.
    struct Released {
        xcb_window_t id = XCB_WINDOW_NONE;
        std::uint64_t serial = 0;
        X11PixelRect outer;
    };
    std::optional<Released> released_;

    // The check window of the window manager that was looked at last, and what was seen.
    xcb_window_t known_ = XCB_WINDOW_NONE;
    bool isKnownUndoable_ = false;

    std::shared_ptr<X11EdgeTile*> self_;        // Empty for what still runs when this is gone.
    X11Connection::Subscription subscription_;  // Last: its observer names the fields above.
};

}  // namespace lumatile
