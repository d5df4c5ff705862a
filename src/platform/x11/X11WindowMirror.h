#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11ProcessIds.h"
#include "platform/x11/X11Window.h"
#include "platform/x11/X11WindowProperties.h"

namespace lumatile {

/// The managed windows of the server with everything that is asked about them, kept fresh by
/// events: what an event says has changed is read again by the next `refresh`, for all windows
/// together. Three round trips at most fetch any number of new windows, one what has changed on
/// known ones, and none is needed when nothing has, nor as a rule when a window has been placed.
class X11WindowMirror {
public:
    /// @param connection outlives the mirror
    explicit X11WindowMirror(X11Connection& connection);

    /// Takes in the events that have arrived and reads what they made stale. Windows that are gone
    /// are gone from the mirror; pointers into it do not outlive this call.
    void refresh();

    /// The managed windows, the topmost first.
    const std::vector<xcb_window_t>& stacking() const { return stacking_; }

    /// Null when there is no such window; also finds windows that are not managed for the moment.
    X11Window* find(xcb_window_t id);

    /// The managed window with this id, null where another one has taken the id since.
    X11Window* findManaged(xcb_window_t id, std::uint64_t serial);

    /// The managed window that has the focus; null when none has.
    X11Window* active();

    /// The topmost managed window that a child of the root frames; null when it frames none.
    X11Window* framedBy(xcb_window_t topLevel);

    /// Whether `window` is minimized: hidden, or not mapped for no other known reason.
    bool isMinimized(const X11Window& window) const;

    /// Whether `window` is on a virtual desktop that is not shown.
    bool isElsewhere(const X11Window& window) const;

    bool isShowingDesktop() const { return isShowingDesktop_; }

    /// Whether a window manager lives. What a dead one left on the root is still there.
    bool hasWindowManager() const { return windowManager_ != XCB_WINDOW_NONE; }

    /// The window by which the living window manager states itself; none when there is none.
    xcb_window_t windowManager() const { return windowManager_; }

    /// Counts the signs of life of the window manager.
    std::uint64_t windowManagerActivity() const { return activity_; }

    /// For signs of life that are seen elsewhere.
    void noteWindowManagerActivity() { ++activity_; }

    /// The part of a window's id that is the same for all windows of one client of the server.
    xcb_window_t clientOf(xcb_window_t window) const { return processIds_.clientOf(window); }

private:
    struct Batch;

    void note(const xcb_generic_event_t& event);
    void noteProperty(const xcb_property_notify_event_t& event);
    void noteConfigured(const xcb_generic_event_t& event);
    void noteToldPlace(X11Window& client, const xcb_configure_notify_event_t& told);
    void noteTopLevel(X11Window& client, const xcb_generic_event_t& event);
    void noteInParent(X11Window& client, const xcb_generic_event_t& event);
    static bool isSinceReading(const X11Window& client, const xcb_generic_event_t& event);
    void noteChange(X11Window& client);
    void noteMoved(xcb_window_t window);
    void noteReparented(xcb_window_t window);
    void noteDestroyed(xcb_window_t window);

    bool isStale() const { return isRootStale_ || !stale_.empty(); }
    X11Window& markStale(X11Window& window);
    std::vector<xcb_window_t> takeStale();
    void forget(xcb_window_t window);

    void readStale();
    std::vector<xcb_window_t> readRoot();
    void takeList(std::span<const std::uint32_t> oldestFirst,
                  std::span<const std::uint32_t> bottomFirst);
    void takeWindowManager(xcb_window_t claimed);
    void add(xcb_window_t window);

    void askFacts(Batch& batch);
    void takeFacts(Batch& batch);
    void askTopLevels(Batch& batch, const std::vector<xcb_window_t>& rootChildren);
    void takeTopLevels(Batch& batch);
    void climb(Batch& batch);
    void settleTopLevel(xcb_window_t window, xcb_window_t topLevel);
    void askPlaces(Batch& batch);
    void takePlaces(Batch& batch);

    X11Connection& connection_;
    X11WindowProperties properties_;
    X11ProcessIds processIds_;

    std::unordered_map<xcb_window_t, X11Window> windows_;
    std::unordered_multimap<xcb_window_t, xcb_window_t> framed_;  // Top level to clients.
    std::vector<xcb_window_t> stacking_;
    std::vector<xcb_window_t> stale_;
    std::vector<xcb_window_t> withoutProcess_;  // New: not asked about yet.
    std::uint64_t lastSerial_ = 0;

    xcb_window_t active_ = XCB_WINDOW_NONE;
    xcb_window_t windowManager_ = XCB_WINDOW_NONE;  // Its check window, while that lives.
    xcb_window_t claimedWindowManager_ = XCB_WINDOW_NONE;
    std::optional<std::uint32_t> currentDesktop_;
    bool isShowingDesktop_ = false;
    bool isRootStale_ = true;
    std::uint64_t activity_ = 0;

    X11Connection::Subscription subscription_;  // Last: its observer names the fields above.
};

}  // namespace lumatile
