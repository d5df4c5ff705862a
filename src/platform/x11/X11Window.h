#pragma once

#include <cstdint>
#include <optional>

#include <xcb/xcb.h>

#include "geometry/Point.h"
#include "geometry/Rect.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11EventBurst.h"
#include "platform/x11/X11PixelRect.h"
#include "platform/x11/X11WindowFacts.h"
#include "platform/x11/X11WindowFrame.h"
#include "platform/x11/X11WindowProperties.h"

namespace lumatile {

/// What was last written to a window. The server knows whole pixels only; whoever reads a frame
/// back gets what was written, for as long as the server's geometry is what became of it.
struct X11WrittenFrame {
    Rect frame;           ///< Unrounded, accessibility space.
    Point origin;         ///< Where that space began on the root then.
    Point asked;          ///< The position as it was asked for, also where another came of it.
    X11PixelRect became;  ///< The outer rectangle that the server had or was still to have for it.

    /// The outer rectangle when the answer was given up on; until it changes, the writing counts.
    std::optional<X11PixelRect> givenUpAt;
};

/// A window of another program as the mirror knows it.
struct X11Window {
    xcb_window_t id = XCB_WINDOW_NONE;
    std::uint64_t serial = 0;  ///< Tells windows apart that had the same id one after the other.

    bool isManaged = false;  ///< On the window manager's list.
    std::optional<Pid> pid;  ///< By the server's word.
    X11WindowFacts facts;
    X11PixelRect client;                      ///< In root coordinates.
    xcb_window_t topLevel = XCB_WINDOW_NONE;  ///< The root's child that holds it; perhaps itself.
    xcb_window_t parent = XCB_WINDOW_NONE;    ///< As it was when the top level was looked for.

    /// What the server's events said last: where the top level is, in root coordinates, and where
    /// the window is in its parent. Origins inside the border.
    std::optional<X11PixelRect> topLevelRect;
    std::optional<X11PixelRect> rectInParent;

    /// The request that `client` was read with last, by its number.
    std::uint32_t placeReadAt = 0;

    /// Whether its geometry is not listened to; what is known of it is then as it was before.
    bool isUnheard = false;
    X11EventBurst geometryEvents;

    /// How many answers of the window manager have been seen, and when the last one was.
    std::uint64_t answers = 0;
    X11Connection::Clock::time_point answeredAt;

    /// How often the window manager has told the program where its window is: its last word about
    /// a move.
    std::uint64_t tellings = 0;

    /// What it told then, in root coordinates, where nothing has been read since.
    std::optional<X11PixelRect> toldPlace;

    std::optional<X11WrittenFrame> written;
    /// Value of `answers` when a write came to nothing or to something else.
    std::optional<std::uint64_t> refusedAt;
    std::optional<double> timeout;  ///< Seconds.

    // What has to be read again.
    X11WindowProperties::Mask staleProperties = 0;
    bool isPlaceStale = false;
    bool isTopLevelStale = false;
    bool isProcessStale = false;

    bool isStale() const {
        return staleProperties != 0 || isPlaceStale || isTopLevelStale || isProcessStale;
    }

    /// With no window between the two.
    bool isChildOfTopLevel() const { return parent == topLevel; }

    X11WindowFrame frame() const { return {client, facts.decoration, facts.shadow}; }

    /// With the place that the window manager has told since, where that is not read yet.
    X11WindowFrame lastHeardFrame() const {
        return {isPlaceStale ? toldPlace.value_or(client) : client, facts.decoration, facts.shadow};
    }

    std::optional<Pid> owner() const { return pid ? pid : facts.statedPid; }

    void noteAnswer() {
        ++answers;
        answeredAt = X11Connection::Clock::now();
    }
};

}  // namespace lumatile
