#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_map>

#include <xcb/xcb.h>

#include "base/Lifeline.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11PixelRect.h"
#include "platform/x11/X11WindowTable.h"

namespace lumatile {

/// Where the windows were when a mouse button went down, for as long as the press is dealt with. A
/// program that had to wait for its turn would take what lies at that place by then for what was
/// pressed there, and the place where the window has been dragged to for the one where the drag
/// began. The server tells of things in their order, so what is known when the press is read is
/// from before it.
class X11PressScene {
public:
    /// Both outlive this. That a button went down is known only while somebody on this connection
    /// watches the raw events of the mouse.
    /// @param released runs, in a turn of its own, when a button has been let go
    X11PressScene(X11Connection& connection, X11WindowTable& table, std::function<void()> released);
    X11PressScene(const X11PressScene&) = delete;
    X11PressScene& operator=(const X11PressScene&) = delete;
    ~X11PressScene() = default;

    /// The outer rectangle that the window had, where it is another one by now. Absent when no
    /// press is dealt with in this turn of the run loop.
    std::optional<X11PixelRect> outerBeforeMove(const X11Window& window) const;

    /// Whether a press is dealt with and it is not known where the window was then.
    bool isUnknown(const X11Window& window) const {
        return isPressed_ && !windows_.contains(window.id);
    }

private:
    struct Seen {
        std::uint64_t serial = 0;
        X11PixelRect outer;
    };

    void note(const xcb_generic_event_t& event);
    void notePress();

    X11Connection& connection_;
    X11WindowTable& table_;
    std::function<void()> released_;
    std::uint8_t inputExtension_ = 0;
    std::unordered_map<xcb_window_t, Seen> windows_;
    bool isPressed_ = false;
    std::uint64_t presses_ = 0;
    X11Connection::Subscription subscription_;
    Lifeline lifeline_;
};

}  // namespace lumatile
