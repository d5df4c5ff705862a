#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "base/Lifeline.h"
#include "platform/freedesktop/bus/InstanceClaim.h"

namespace lumatile {

class BusConnection;
class BusObject;

/// The one program of a desktop, known by a name on the session bus. Whoever is on the bus may call
/// `OpenSettings` of the interface "org.lumatile.Lumatile" there, at "/org/lumatile/Lumatile".
class SessionBusInstance {
public:
    /// @param session the user's bus; outlives this
    /// @param display the desktop, as in $DISPLAY: one bus may serve several
    /// @param openSettings runs on the run loop when another program asks
    SessionBusInstance(BusConnection& session, std::string_view display,
                       std::function<void()> openSettings);
    SessionBusInstance(const SessionBusInstance&) = delete;
    SessionBusInstance& operator=(const SessionBusInstance&) = delete;

    /// Nobody is answered any more; the name goes with the connection.
    ~SessionBusInstance();

    /// Takes the name; where another one has it, asks that to open its settings. Waits for it for
    /// some seconds at most.
    InstanceClaim claim();

    /// Asks the other one to open its settings, and waits as long.
    /// @return `second`, `unreachable`, or `unavailable` where none is on the bus
    InstanceClaim ask();

    /// The name of the program on that desktop.
    static std::string nameOn(std::string_view display);

private:
    BusConnection& session_;
    std::string name_;
    std::function<void()> openSettings_;
    std::unique_ptr<BusObject> object_;  ///< From the claim on.
    Lifeline lifeline_;
};

}  // namespace lumatile
