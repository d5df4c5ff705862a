#pragma once

#include <gio/gio.h>

#include <deque>
#include <memory>
#include <string>
#include <string_view>

#include "base/Lifeline.h"
#include "platform/freedesktop/bus/BusConnection.h"
#include "platform/freedesktop/bus/BusObject.h"
#include "platform/freedesktop/glib/GLibHandles.h"
#include "platform/freedesktop/glib/MainLoopSource.h"

namespace lumatile {

class Controlled;
class SystemLog;

/// Lets other programs of the same user control the running one, over the session bus. A bus that
/// is started anew is found again, and a name that another program has is taken when it is free.
/// Nothing here waits for the bus; requests come from the main loop of GLib, which the toolkit's
/// run loop serves. They are carried out in the order in which they came, as many in a turn of the
/// loop as leave it free for keys and windows, however many there are.
class ControlObject {
public:
    /// @param session the user's bus, on which it takes a name; without one nobody can ask
    /// @param display the desktop, as in $DISPLAY: one bus may serve several
    /// @param controlled and `log` outlive this, and so does `session`
    ControlObject(BusConnection& session, std::string_view display, Controlled& controlled,
                  SystemLog& log);
    ControlObject(const ControlObject&) = delete;
    ControlObject& operator=(const ControlObject&) = delete;

    /// Nobody is answered any more.
    ~ControlObject();

private:
    void connect();
    void serve(GDBusConnection* connection);
    void noteLost();
    void take(const BusObject::Call& call);
    void carryOutSome();
    void carryOut(GDBusMethodInvocation* invocation) const;

    BusConnection& session_;
    std::string name_;
    Controlled& controlled_;
    SystemLog& log_;
    GObjectHandle<GCancellable> cancellable_;    ///< Of what is answered after the program's end.
    GObjectHandle<GDBusConnection> connection_;  ///< The one that is served; null without a bus.
    gulong lossHandler_ = 0;                     ///< Of that connection.
    std::unique_ptr<BusObject> object_;          ///< Where there is a bus.
    MainLoopSource retry_;                       ///< While a bus is looked for that was lost.
    std::deque<GObjectHandle<GDBusMethodInvocation>> waiting_;  ///< Not carried out yet.
    MainLoopSource turn_;                                       ///< While some are waiting.
    Lifeline lifeline_;
};

}  // namespace lumatile
