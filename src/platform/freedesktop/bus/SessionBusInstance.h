#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/freedesktop/bus/InstanceClaim.h"

namespace lumatile {

/// The one program of a desktop, known by a name on the session bus. Whoever is on the bus may call
/// `OpenSettings` of the interface "org.lumatile.Lumatile" there, at "/org/lumatile/Lumatile".
class SessionBusInstance {
public:
    /// @param display the desktop, as in $DISPLAY: one bus may serve several
    /// @param openSettings runs on the run loop when another program asks
    SessionBusInstance(std::string_view display, std::function<void()> openSettings);
    SessionBusInstance(const SessionBusInstance&) = delete;
    SessionBusInstance& operator=(const SessionBusInstance&) = delete;

    /// Gives the name back.
    ~SessionBusInstance();

    /// Needs the toolkit's application object. Waits for the other program for some seconds at
    /// most.
    InstanceClaim claim();

    const std::string& name() const { return name_; }

private:
    class Object;

    std::string name_;
    std::unique_ptr<Object> object_;
};

}  // namespace lumatile
