#pragma once

#include <gio/gio.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/freedesktop/glib/GLibHandles.h"

namespace lumatile {

/// A connection to a message bus that can be turned over alone: whoever waits for something that
/// comes over it waits without anything else of the program running in between. The rest of the
/// time the main loop of GLib serves it, for a bounded time in each turn.
///
/// Its objects hear one peer alone. Calls of all others are dropped where they arrive, before they
/// cost the main thread anything.
class LoneBusConnection {
public:
    using Clock = std::chrono::steady_clock;

    struct Method {
        std::string service;
        std::string path;
        std::string interface;
        std::string name;
    };

    /// Of a signal; empty texts stand for any.
    using Signal = Method;

    /// Waits for the connection; a bus that lives answers at once.
    /// @param wellKnownName of the peer whose calls are heard: the one that owns it now
    /// @return null where no bus answers or nobody owns the name
    static std::unique_ptr<LoneBusConnection> open(const std::string& address,
                                                   const std::string& wellKnownName);

    LoneBusConnection(const LoneBusConnection&) = delete;
    LoneBusConnection& operator=(const LoneBusConnection&) = delete;
    ~LoneBusConnection();

    /// The bus's own name of this connection, and of the peer.
    const std::string& uniqueName() const;
    const std::string& peer() const;

    /// Whether the bus or the peer is gone. It does not come back.
    bool isLost() const;

    /// Calls `lost` once when that has happened, while this connection is turned over.
    void whenLost(std::function<void()> lost);

    /// A call that has arrived; `invocation` is to be answered once, now or later.
    struct Call {
        std::string method;
        GVariant* arguments = nullptr;
        GDBusMethodInvocation* invocation = nullptr;
    };

    /// Makes an object that the peer can call, as long as this connection lives.
    /// @param description one interface, in the words of the bus (XML)
    void serve(const std::string& path, const char* description,
               std::function<void(const Call&)> handler);

    /// Calls `told` with the arguments of every such signal of the peer, as long as this lives.
    void listen(const Signal& signal, std::function<void(GVariant*)> told);

    /// Calls a method and waits for the answer; nothing else comes in between.
    /// @param arguments a tuple, or null for none; taken over
    /// @return the answer's arguments; null for an error
    GVariantHandle callNow(const Method& method, GVariant* arguments, int milliseconds);

    /// Calls a method. `done` is called once with the answer's arguments, or with null for an
    /// error, unless this connection goes before.
    void call(const Method& method, GVariant* arguments, int milliseconds,
              std::function<void(GVariant*)> done);

    /// Turns this connection over until `isDone`, which is asked after each message.
    /// @return false when it was not by then, or the connection was lost
    bool waitUntil(const std::function<bool()>& isDone, Clock::time_point deadline);

    /// Deals with what has arrived, without waiting, for as long as a turn may take.
    void dispatch();

private:
    struct State;

    explicit LoneBusConnection(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

}  // namespace lumatile
