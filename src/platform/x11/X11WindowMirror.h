#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11GeometryListening.h"
#include "platform/x11/X11PressScene.h"
#include "platform/x11/X11ProcessIds.h"
#include "platform/x11/X11RootFacts.h"
#include "platform/x11/X11Window.h"
#include "platform/x11/X11WindowEvents.h"
#include "platform/x11/X11WindowProperties.h"
#include "platform/x11/X11WindowTable.h"

namespace lumatile {

/// The managed windows of the server with everything that is asked about them, kept fresh by
/// events: what an event says has changed is read again by the next `refresh`, for all windows
/// together. Three round trips at most fetch any number of new windows, one what has changed on
/// known ones, and none is needed when nothing has, nor as a rule when a window has been placed.
/// Of a window that moves on and on while nobody asks, as a dragged one does, no events are asked
/// for until the next `refresh`, which reads it again in the same round trip.
class X11WindowMirror {
public:
    /// @param connection outlives the mirror
    explicit X11WindowMirror(X11Connection& connection);

    /// Takes in the events that have arrived and reads what they made stale. Windows that are gone
    /// are gone from the mirror; pointers into it do not outlive this call.
    void refresh();

    /// The managed windows, the topmost first.
    const std::vector<xcb_window_t>& stacking() const { return table_.stacking(); }

    /// Null when there is no such window; also finds windows that are not managed for the moment.
    X11Window* find(xcb_window_t id) { return table_.find(id); }

    /// The managed window with this id, null where another one has taken the id since.
    X11Window* findManaged(xcb_window_t id, std::uint64_t serial);

    /// The managed window that has the focus; null when none has.
    X11Window* active();

    /// The topmost managed window that a child of the root frames; null when it frames none.
    X11Window* framedBy(xcb_window_t topLevel) { return table_.topmostIn(topLevel); }

    /// The managed window that was at a place on the root when a mouse button went down, where it
    /// has moved since; null when none was or it has not, and when no press is dealt with in this
    /// turn of the run loop. One of which it is not known where it was counts as pressed when the
    /// pointer, having moved since, is in it.
    X11Window* movedSincePressAt(int x, int y);

    /// The outer rectangle of such a window when the button went down.
    std::optional<X11PixelRect> outerAtPress(const X11Window& window) const {
        return press_.outerBeforeMove(window);
    }

    /// Whether `window` is minimized: hidden, or not mapped for no other known reason.
    bool isMinimized(const X11Window& window) const;

    /// Whether `window` is on a virtual desktop that is not shown.
    bool isElsewhere(const X11Window& window) const;

    bool isShowingDesktop() const { return root_.isShowingDesktop(); }

    /// Whether a window manager lives. What a dead one left on the root is still there.
    bool hasWindowManager() const { return windowManager() != XCB_WINDOW_NONE; }

    /// The window by which the living window manager states itself; none when there is none.
    xcb_window_t windowManager() const { return root_.windowManager(); }

    /// Counts the signs of life of the window manager.
    std::uint64_t windowManagerActivity() const { return root_.windowManagerActivity(); }

    /// For signs of life that are seen elsewhere.
    void noteWindowManagerActivity() { root_.noteWindowManagerActivity(); }

    /// The part of a window's id that is the same for all windows of one client of the server.
    xcb_window_t clientOf(xcb_window_t window) const { return processIds_.clientOf(window); }

private:
    /// The pixel that the pointer is on.
    X11PixelRect askPointer();

    bool isStale() const {
        return root_.isStale() || table_.isStale() || listening_.isAnyUnheard();
    }

    X11Connection& connection_;
    X11WindowProperties properties_;
    X11ProcessIds processIds_;
    X11WindowTable table_;
    X11RootFacts root_;
    X11GeometryListening listening_;
    X11PressScene press_;  // Before the events, so that it sees what was before the press.
    X11WindowEvents events_;
};

}  // namespace lumatile
