#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/freedesktop/glib/GLibHandles.h"

namespace lumatile {

/// A connection to a message bus of its own. It is made by the first use and made anew by the next
/// one after it was lost; nothing here waits for an answer, and the end of the bus does not end the
/// program. Callbacks come from the main loop of GLib, which the toolkit's run loop serves.
class BusConnection {
public:
    /// What a call came to.
    struct Reply {
        GVariant* value = nullptr;  ///< The answer's arguments; null when there was an error.
        std::string errorName;      ///< The bus's name of the error; empty for one on our side.
        std::string error;          ///< In words.
        bool hasBus = true;         ///< False where no bus could be reached.
    };

    struct Method {
        const char* service;
        const char* path;
        const char* interface;
        const char* name;
    };

    /// @param address of the bus; empty: there is none, and every call fails
    explicit BusConnection(std::string address);
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;
    ~BusConnection();

    /// The user's bus and the system's, as the environment and the usual places say. Nothing is
    /// started to have one.
    static std::string sessionAddress();
    static std::string systemAddress();

    /// Calls a method. `done` is called once, from the main loop, unless the connection goes
    /// before.
    /// @param arguments a tuple, or null for none; taken over
    /// @param milliseconds after which the answer counts as an error
    /// @param startsService whether the bus may start the service
    void call(const Method& method, GVariant* arguments, int milliseconds, bool startsService,
              std::function<void(const Reply&)> done);

    /// Connects unless that has been done, and waits for it; a bus that lives answers at once.
    /// @return the library's connection, which may be lost at any time; null where no bus answers
    GObjectHandle<GDBusConnection> connectNow();

    /// Calls `then` once with the library's connection, or with null where no bus could be reached:
    /// now where there is one, else from the main loop, unless this goes before.
    void whenConnected(std::function<void(GDBusConnection*)> then);

    /// Being told of signals; destroying it ends that.
    class Subscription;

    /// Calls `told` with the arguments of every signal of this name.
    /// @param path of the object that sends it
    [[nodiscard]] std::unique_ptr<Subscription> subscribe(const Method& signal,
                                                          std::function<void(GVariant*)> told);

private:
    struct State;

    std::shared_ptr<State> state_;
};

/// A subscription, as long as it lives.
class BusConnection::Subscription {
public:
    struct Record;

    explicit Subscription(std::shared_ptr<Record> record);
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription();

private:
    std::shared_ptr<Record> record_;
};

}  // namespace lumatile
