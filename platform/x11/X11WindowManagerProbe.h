#pragma once

#include <cstdint>
#include <optional>

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11WindowMirror.h"

namespace lumatile {

/// Finds out whether the window manager still handles messages: it is asked for something that it
/// must answer, the frame extents of a window of our own, and it answers in the order of its
/// messages. So once it has answered, it has dealt with everything that was asked before.
class X11WindowManagerProbe {
public:
    /// @param connection outlives the probe
    /// @param mirror outlives the probe; is told of the answers
    X11WindowManagerProbe(X11Connection& connection, X11WindowMirror& mirror);
    X11WindowManagerProbe(const X11WindowManagerProbe&) = delete;
    X11WindowManagerProbe& operator=(const X11WindowManagerProbe&) = delete;
    ~X11WindowManagerProbe();

    /// Asks, without waiting.
    void ask();

    /// Whether the last question has been answered, and so everything before it dealt with.
    bool isAnswered() const { return isAnswered_; }

    /// To be called when the window manager has left a writing without any answer.
    void noteSilence();

    /// Whether nothing has been heard of the window manager since it left a writing unanswered.
    bool isSilent() const;

private:
    void note(const xcb_generic_event_t& event);
    void destroyWindow();

    X11Connection& connection_;
    X11WindowMirror& mirror_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    xcb_atom_t request_;
    xcb_atom_t answer_;
    bool isAnswered_ = false;
    std::optional<std::uint64_t> silentSince_;  // The activity then.
    X11Connection::Subscription subscription_;  // Last: its observer names the fields above.
};

}  // namespace lumatile
