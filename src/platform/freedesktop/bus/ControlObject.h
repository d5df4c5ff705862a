#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace lumatile {

class Controlled;

/// Lets other programs of the same user ask the running one for things, over the session bus.
/// Nothing here waits for the bus; requests come from the main loop of GLib, which the toolkit's
/// run loop serves.
class ControlObject {
public:
    /// @param address of the bus; empty: there is none, and nobody can ask
    /// @param display the desktop, as in $DISPLAY: one bus may serve several
    /// @param controlled outlives this
    ControlObject(const std::string& address, std::string_view display, Controlled& controlled);
    ControlObject(const ControlObject&) = delete;
    ControlObject& operator=(const ControlObject&) = delete;

    /// Nobody is answered any more.
    ~ControlObject();

private:
    struct State;

    std::unique_ptr<State> state_;
};

}  // namespace lumatile
