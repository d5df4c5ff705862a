#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11WindowMirror.h"

namespace lumatile {

/// Finds out whether the window manager still handles messages: it is asked for something that has
/// an answer, and it answers in the order of its messages. So once it has, it has dealt with
/// everything that was asked before. The question is for the frame extents of a window of our own;
/// to a window manager that does not support it (kwin) it is a conversion of the selection by which
/// that owns the screen.
class X11WindowManagerProbe {
public:
    /// @param connection outlives the probe
    /// @param mirror outlives the probe; is told of the answers
    X11WindowManagerProbe(X11Connection& connection, X11WindowMirror& mirror);
    X11WindowManagerProbe(const X11WindowManagerProbe&) = delete;
    X11WindowManagerProbe& operator=(const X11WindowManagerProbe&) = delete;
    ~X11WindowManagerProbe();

    /// Asks, without waiting for the answer.
    void ask();

    /// Whether the last question has been answered, and so everything before it dealt with.
    bool isAnswered() const { return isAnswered_; }

    /// To be called when the window manager has left a writing without any answer.
    void noteSilence();

    /// Whether nothing has been heard of the window manager since it left a writing unanswered.
    bool isSilent() const;

private:
    bool takesExtentsRequests();
    void note(const xcb_generic_event_t& event);
    std::optional<xcb_window_t> answeredWindow(const xcb_generic_event_t& event) const;

    X11Connection& connection_;
    X11WindowMirror& mirror_;
    xcb_atom_t request_;
    xcb_atom_t answer_;
    xcb_atom_t selection_;
    xcb_atom_t version_;
    // One for each question that has no answer yet, the last question's at the end. None of them
    // may go before its answer, or some window managers die of writing it.
    std::vector<xcb_window_t> windows_;
    bool isAnswered_ = false;
    std::optional<std::uint64_t> silentSince_;  // The activity then.
    X11Connection::Subscription subscription_;  // Last: its observer names the fields above.
};

}  // namespace lumatile
