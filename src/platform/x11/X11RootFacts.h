#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"

namespace lumatile {

/// What the window manager keeps on the root: which windows there are, which has the focus, which
/// desktop is shown; and whether it lives, since what a dead one left there is still there.
class X11RootFacts {
public:
    /// @param connection outlives this
    explicit X11RootFacts(X11Connection& connection);
    X11RootFacts(const X11RootFacts&) = delete;
    X11RootFacts& operator=(const X11RootFacts&) = delete;
    ~X11RootFacts() = default;

    /// What is read of the root beside the facts below.
    struct Reading {
        std::vector<xcb_window_t> managed;   ///< The topmost first.
        std::vector<xcb_window_t> children;  ///< Of the root.
    };

    /// Reads everything anew, in one round trip.
    Reading read();

    bool isStale() const { return isStale_; }
    void markStale() { isStale_ = true; }

    /// A property of the root has changed.
    void noteProperty(xcb_atom_t name);

    /// A window is gone.
    void noteDestroyed(xcb_window_t window);

    xcb_window_t active() const { return active_; }
    const std::optional<std::uint32_t>& currentDesktop() const { return currentDesktop_; }
    bool isShowingDesktop() const { return isShowingDesktop_; }

    /// The window by which the living window manager states itself; none when there is none.
    xcb_window_t windowManager() const { return windowManager_; }

    /// Asks the window that the root names whether it is a window manager's; absent when that is
    /// known.
    std::optional<xcb_get_property_cookie_t> askWindowManager();

    /// Waits for the answer.
    void takeWindowManager(xcb_get_property_cookie_t cookie);

    /// Counts the signs of life of the window manager.
    std::uint64_t windowManagerActivity() const { return activity_; }
    void noteWindowManagerActivity() { ++activity_; }

private:
    void claim(xcb_window_t windowManager);

    X11Connection& connection_;
    xcb_window_t active_ = XCB_WINDOW_NONE;
    xcb_window_t windowManager_ = XCB_WINDOW_NONE;  // Its check window, while that lives.
    xcb_window_t claimed_ = XCB_WINDOW_NONE;
    std::optional<std::uint32_t> currentDesktop_;
    bool isShowingDesktop_ = false;
    bool isStale_ = true;
    std::uint64_t activity_ = 0;
};

}  // namespace lumatile
