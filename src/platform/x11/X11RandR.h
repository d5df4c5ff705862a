#pragma once

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"

namespace lumatile {

/// What the server's RandR can do, and its events about monitors and what drives them. All adapters
/// of a connection go by this: the version that is stated and the events that are selected belong
/// to the connection.
class X11RandR {
public:
    /// States the version, since the server sends the newer events only to clients that did, and
    /// selects the events. One round trip.
    explicit X11RandR(X11Connection& connection);

    /// Whether the server tells its controllers without looking at the outputs' cables first, which
    /// takes long.
    bool knowsControllers() const { return version_ >= 103; }

    /// Whether the server tells its monitors.
    bool knowsMonitors() const { return version_ >= 105; }

    /// Whether the event says that monitors, outputs or controllers are others now.
    bool isChange(const xcb_generic_event_t& event) const;

private:
    int version_ = 0;  // 105 for 1.5; 0 without RandR.
    int firstEvent_ = 0;
};

}  // namespace lumatile
