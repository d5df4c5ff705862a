#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>

#include <xcb/xcb.h>

#include "base/ObserverList.h"
#include "platform/x11/X11Atoms.h"

namespace lumatile {

/// The one connection to the X server, which all X11 adapters share. Events are handed out in two
/// stages. Observers see every event as soon as it is read, also while a window write waits for its
/// answer, and only note what it says. Whatever makes the program act on an event goes through
/// `defer` and runs when the run loop calls `dispatch`, so that no action starts inside another
/// one.
class X11Connection {
public:
    using Observers = ObserverList<const xcb_generic_event_t&>;
    using Observer = Observers::Observer;
    using Subscription = Observers::Subscription;
    using Clock = std::chrono::steady_clock;

    /// @param displayName as in $DISPLAY; empty: the value of $DISPLAY
    /// @return nothing when there is no such server or it refuses
    static std::unique_ptr<X11Connection> open(const std::string& displayName = {});

    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    /// Returns when the server has carried out what was asked of it, or after a second.
    ~X11Connection();

    xcb_connection_t* get() const { return connection_; }
    const xcb_screen_t& screen() const { return *screen_; }
    xcb_window_t root() const { return screen_->root; }
    X11Atoms& atoms() { return atoms_; }

    /// Adds to the root window's event mask. The mask of a window belongs to the connection, so
    /// observers that each set their own would undo one another.
    void selectRootEvents(std::uint32_t mask);

    /// `observer` sees each event until the subscription is destroyed.
    [[nodiscard]] Subscription observe(Observer observer);

    /// Runs `action` at the next `dispatch`, after every action that was deferred before it.
    void defer(std::function<void()> action);

    /// Runs `action` when nothing is deferred any more: behind all that follows from the events
    /// that have been read, also from what is put off once more on the way.
    void deferToEnd(std::function<void()> action);

    /// For the run loop: readable when the server has sent something.
    int fileDescriptor() const;

    /// Reads what has arrived and runs the deferred actions. To be called when the descriptor is
    /// readable and before the run loop blocks (replies that were waited for bring events along,
    /// and those do not make the descriptor readable again).
    void dispatch();

    /// Hands everything that has arrived to the observers, without waiting.
    void readEvents();

    /// Waits until at least one event has been handed to the observers.
    /// @return false when `deadline` passed first or the server is gone
    bool waitForEvents(Clock::time_point deadline);

    /// One round trip, after which the observers have seen every event up to now.
    void synchronize();

    /// True once the server has gone away; nothing works from then on.
    bool isLost() const;

private:
    X11Connection(xcb_connection_t* connection, xcb_screen_t* screen);

    void awaitServer();
    void runFirst(std::deque<std::function<void()>>& actions);

    xcb_connection_t* connection_;
    xcb_screen_t* screen_;
    X11Atoms atoms_;
    std::uint32_t rootEventMask_ = 0;
    Observers observers_;
    std::deque<std::function<void()>> deferred_;
    std::deque<std::function<void()>> deferredToEnd_;
    bool dispatching_ = false;
};

}  // namespace lumatile
