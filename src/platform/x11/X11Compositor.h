#pragma once

#include <functional>

#include <xcb/xcb.h>

#include "base/Lifeline.h"
#include "platform/x11/X11Connection.h"

namespace lumatile {

/// Whether a compositor runs, so that windows can be translucent. It may come and go at any time.
class X11Compositor {
public:
    /// @param connection outlives this
    /// @param changed runs, deferred, after a compositor has come, gone or given place to another
    X11Compositor(X11Connection& connection, std::function<void()> changed);
    X11Compositor(const X11Compositor&) = delete;
    X11Compositor& operator=(const X11Compositor&) = delete;
    ~X11Compositor() = default;

    /// As the server's events had it last; asks nothing.
    bool isRunning() const { return isRunning_; }

    /// Whether the server can tell of compositors at all; if not, none counts as running. The
    /// extension that tells is XFixes, which from here on can be used up to version 2.
    bool canBeKnown() const { return firstEvent_ >= 0; }

private:
    void note(const xcb_generic_event_t& event);

    X11Connection& connection_;
    std::function<void()> changed_;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    int firstEvent_ = -1;
    bool isRunning_ = false;
    X11Connection::Subscription subscription_;
    Lifeline lifeline_;  // For deferred work, which may still be waiting when this is gone.
};

}  // namespace lumatile
