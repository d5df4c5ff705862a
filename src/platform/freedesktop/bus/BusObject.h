#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace lumatile {

/// An object that others on a bus can call, as long as this lives.
class BusObject {
public:
    /// A call that has arrived, of a method and with arguments that the description has.
    struct Call {
        const char* method;
        GVariant* arguments;
        GDBusMethodInvocation* invocation;  ///< To be answered once.
    };
    using Handler = std::function<void(const Call&)>;

    /// @param path of the object; one that is taken on this connection leaves it unheard
    /// @param description one interface, in the words of the bus (XML)
    /// @param handler called from the main loop of GLib
    BusObject(GDBusConnection* connection, const char* path, const char* description,
              Handler handler);
    BusObject(const BusObject&) = delete;
    BusObject& operator=(const BusObject&) = delete;
    ~BusObject();

    /// Takes a name on the bus; where somebody has it, as soon as that gives it up. Does not wait
    /// for the answer.
    /// @param isTaken called from the main loop where somebody has it
    static void requestName(GDBusConnection* connection, const std::string& name,
                            std::function<void()> isTaken);

    /// Takes a name on the bus, unless somebody has it, and waits for the answer.
    /// @return whether this connection has the name; absent: the bus does not answer
    static std::optional<bool> requestNameNow(GDBusConnection* connection, const std::string& name,
                                              int milliseconds);

private:
    struct State;

    std::unique_ptr<State> state_;
};

}  // namespace lumatile
