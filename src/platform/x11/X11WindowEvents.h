#pragma once

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11GeometryListening.h"
#include "platform/x11/X11RootFacts.h"
#include "platform/x11/X11WindowProperties.h"
#include "platform/x11/X11WindowTable.h"

namespace lumatile {

/// Notes what the server's events say of the windows: a move is followed as far as events tell it
/// all, everything else is marked as stale. Asks the server nothing.
class X11WindowEvents {
public:
    /// All outlive this.
    X11WindowEvents(X11Connection& connection, const X11WindowProperties& properties,
                    X11WindowTable& table, X11RootFacts& root, X11GeometryListening& listening);
    X11WindowEvents(const X11WindowEvents&) = delete;
    X11WindowEvents& operator=(const X11WindowEvents&) = delete;
    ~X11WindowEvents() = default;

private:
    void note(const xcb_generic_event_t& event);
    void noteProperty(const xcb_property_notify_event_t& event);
    void noteConfigured(const xcb_generic_event_t& event);
    void noteToldPlace(X11Window& client, const xcb_configure_notify_event_t& told);
    void noteTopLevel(X11Window& client, const xcb_generic_event_t& event);
    void noteInParent(X11Window& client, const xcb_generic_event_t& event);
    void noteMoved(xcb_window_t window);
    void noteMoved(X11Window& client);
    void noteReparented(xcb_window_t window);
    void noteDestroyed(xcb_window_t window);
    void noteGeometry(X11Window& client);
    void noteChange(X11Window& client);

    X11Connection& connection_;
    const X11WindowProperties& properties_;
    X11WindowTable& table_;
    X11RootFacts& root_;
    X11GeometryListening& listening_;
    X11Connection::Subscription subscription_;  // Last: its observer names the fields above.
};

}  // namespace lumatile
