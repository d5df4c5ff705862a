#pragma once

#include <gio/gio.h>

#include <memory>
#include <string>
#include <string_view>

#include "base/Lifeline.h"
#include "platform/freedesktop/bus/BusConnection.h"
#include "platform/freedesktop/bus/BusObject.h"
#include "platform/freedesktop/glib/GLibHandles.h"

namespace lumatile {

class Controlled;

/// Lets other programs of the same user control the running one, over the session bus.
/// Nothing here waits for the bus; requests come from the main loop of GLib, which the toolkit's
/// run loop serves.
class ControlObject {
public:
    /// @param session the user's bus, on which it takes a name; without one nobody can ask
    /// @param display the desktop, as in $DISPLAY: one bus may serve several
    /// @param controlled outlives this
    ControlObject(BusConnection& session, std::string_view display, Controlled& controlled);
    ControlObject(const ControlObject&) = delete;
    ControlObject& operator=(const ControlObject&) = delete;

    /// Nobody is answered any more.
    ~ControlObject();

private:
    void serve(GDBusConnection* connection);
    void carryOut(const BusObject::Call& call) const;

    std::string name_;
    Controlled& controlled_;
    GObjectHandle<GCancellable> cancellable_;  ///< Of what is answered after the program's end.
    std::unique_ptr<BusObject> object_;        ///< Where there is a bus.
    Lifeline lifeline_;
};

}  // namespace lumatile
