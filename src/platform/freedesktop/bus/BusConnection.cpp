#include "platform/freedesktop/bus/BusConnection.h"

#include <cstdlib>
#include <filesystem>
#include <utility>
#include <vector>

namespace lumatile {

namespace {

constexpr auto asClient = static_cast<GDBusConnectionFlags>(
    G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// The address of a bus at a socket; empty when there is no such file.
std::string addressOf(const std::filesystem::path& socket) {
    std::error_code ignored;
    if (!std::filesystem::exists(socket, ignored)) {
        return {};
    }
    char* escaped = g_dbus_address_escape_value(socket.c_str());
    std::string address = std::string("unix:path=") + escaped;
    g_free(escaped);
    return address;
}

}  // namespace

/// A wanted signal. It outlives its subscription while the library may still deliver one.
struct BusConnection::Subscription::Record {
    std::string service;
    std::string path;
    std::string interface;
    std::string name;
    std::function<void(GVariant*)> told;
    GObjectHandle<GDBusConnection> connection;  ///< Where it is registered; null: nowhere.
    guint number = 0;

    void registerAt(const std::shared_ptr<Record>& self, GDBusConnection* with) {
        unregister();
        connection.reset(with);
        g_object_ref(with);
        number = g_dbus_connection_signal_subscribe(
            with, service.c_str(), interface.c_str(), name.c_str(), path.c_str(), nullptr,
            G_DBUS_SIGNAL_FLAGS_NONE, deliver, new std::weak_ptr<Record>(self), release);
    }

    /// Until then the library knows of this record without keeping it, and this keeps the library's
    /// connection.
    void unregister() {
        if (connection) {
            g_dbus_connection_signal_unsubscribe(connection.get(), number);
            connection.reset();
        }
    }

    static void deliver(GDBusConnection* /*connection*/, const char* /*sender*/,
                        const char* /*path*/, const char* /*interface*/, const char* /*name*/,
                        GVariant* arguments, gpointer data) {
        // It may be on its way when the subscription ends, and may end it itself.
        if (const auto record = static_cast<std::weak_ptr<Record>*>(data)->lock()) {
            record->told(arguments);
        }
    }

    static void release(gpointer data) { delete static_cast<std::weak_ptr<Record>*>(data); }
};

/// What the library's callbacks share with the connection.
struct BusConnection::State {
    std::string address;
    GObjectHandle<GDBusConnection> connection;
    bool isConnecting = false;
    std::vector<std::function<void(const std::string& error)>> waiting;
    std::vector<std::weak_ptr<Subscription::Record>> records;

    bool isUsable() const {
        return connection && g_dbus_connection_is_closed(connection.get()) == 0;
    }

    /// Calls `then` once there is a connection, or with why there is none.
    static void connected(const std::shared_ptr<State>& state,
                          std::function<void(const std::string& error)> then) {
        if (state->isUsable()) {
            then("");
            return;
        }
        state->waiting.push_back(std::move(then));
        if (state->isConnecting) {
            return;
        }
        state->isConnecting = true;
        state->connection.reset();
        if (state->address.empty()) {
            g_idle_add_full(
                G_PRIORITY_DEFAULT,
                [](gpointer data) -> gboolean {
                    if (const auto kept = lock(data)) {
                        kept->finish("there is no message bus");
                    }
                    return G_SOURCE_REMOVE;
                },
                new std::weak_ptr<State>(state), release);
            return;
        }
        g_dbus_connection_new_for_address(state->address.c_str(), asClient, nullptr, nullptr,
                                          haveConnected, new std::weak_ptr<State>(state));
    }

    static void haveConnected(GObject* /*source*/, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<std::weak_ptr<State>> held(static_cast<std::weak_ptr<State>*>(data));
        GError* failure = nullptr;
        GObjectHandle<GDBusConnection> made(
            g_dbus_connection_new_for_address_finish(result, &failure));
        const GErrorHandle error(failure);
        const auto state = held->lock();
        if (!state) {
            return;
        }
        // One that was waited for meanwhile is as good.
        if (!state->isUsable()) {
            state->take(std::move(made));
        }
        state->finish(state->isUsable() || !error ? "" : error->message);
    }

    void take(GObjectHandle<GDBusConnection> made) {
        connection = std::move(made);
        for (const auto& each : records) {
            const auto record = each.lock();
            if (record && connection) {
                record->registerAt(record, connection.get());
            }
        }
    }

    void finish(const std::string& error) {
        isConnecting = false;
        for (const auto& then : std::exchange(waiting, {})) {
            then(error);
        }
    }

    static std::shared_ptr<State> lock(gpointer data) {
        return static_cast<std::weak_ptr<State>*>(data)->lock();
    }
    static void release(gpointer data) { delete static_cast<std::weak_ptr<State>*>(data); }
};

BusConnection::BusConnection(std::string address) : state_(std::make_shared<State>()) {
    state_->address = std::move(address);
}

BusConnection::~BusConnection() = default;

std::string BusConnection::sessionAddress() {
    std::string named = variable("DBUS_SESSION_BUS_ADDRESS");
    const std::string folder = variable("XDG_RUNTIME_DIR");
    if (!named.empty() || folder.empty()) {
        return named;
    }
    return addressOf(std::filesystem::path(folder) / "bus");
}

std::string BusConnection::systemAddress() {
    const std::string named = variable("DBUS_SYSTEM_BUS_ADDRESS");
    return named.empty() ? addressOf("/var/run/dbus/system_bus_socket") : named;
}

void BusConnection::call(const Method& method, GVariant* arguments, int milliseconds,
                         bool startsService, std::function<void(const Reply&)> done) {
    struct Call {
        std::string service;
        std::string path;
        std::string interface;
        std::string name;
        GVariantHandle arguments;
        int milliseconds = 0;
        GDBusCallFlags flags = G_DBUS_CALL_FLAGS_NONE;
        std::function<void(const Reply&)> done;
        std::weak_ptr<State> state;

        static void answered(GObject* source, GAsyncResult* result, gpointer data) {
            const std::unique_ptr<std::shared_ptr<Call>> call(
                static_cast<std::shared_ptr<Call>*>(data));
            GError* failure = nullptr;
            // NOLINTNEXTLINE(*-reinterpret-cast): the library's classes are laid out so.
            auto* connection = reinterpret_cast<GDBusConnection*>(source);
            const GVariantHandle value(g_dbus_connection_call_finish(connection, result, &failure));
            const GErrorHandle error(failure);
            Reply reply;
            reply.value = value.get();
            if (error) {
                char* name = g_dbus_error_get_remote_error(error.get());
                reply.errorName = name == nullptr ? "" : name;
                g_free(name);
                g_dbus_error_strip_remote_error(error.get());
                reply.error = error->message;
            }
            // Nobody waits any more when the connection is gone.
            if (!(*call)->state.expired()) {
                (*call)->done(reply);
            }
        }
    };
    const auto call = std::make_shared<Call>();
    call->service = method.service;
    call->path = method.path;
    call->interface = method.interface;
    call->name = method.name;
    call->arguments.reset(arguments == nullptr ? nullptr : g_variant_ref_sink(arguments));
    call->milliseconds = milliseconds;
    call->flags = startsService ? G_DBUS_CALL_FLAGS_NONE : G_DBUS_CALL_FLAGS_NO_AUTO_START;
    call->done = std::move(done);
    call->state = state_;
    State::connected(state_, [call](const std::string& error) {
        const auto state = call->state.lock();
        if (!error.empty() || !state) {
            Reply reply;
            reply.error = error;
            reply.hasBus = false;
            call->done(reply);
            return;
        }
        g_dbus_connection_call(state->connection.get(), call->service.c_str(), call->path.c_str(),
                               call->interface.c_str(), call->name.c_str(), call->arguments.get(),
                               nullptr, call->flags, call->milliseconds, nullptr, Call::answered,
                               new std::shared_ptr<Call>(call));
    });
}

GObjectHandle<GDBusConnection> BusConnection::connectNow() {
    if (!state_->isUsable() && !state_->address.empty()) {
        state_->take(GObjectHandle<GDBusConnection>(g_dbus_connection_new_for_address_sync(
            state_->address.c_str(), asClient, nullptr, nullptr, nullptr)));
    }
    if (!state_->isUsable()) {
        return nullptr;
    }
    g_object_ref(state_->connection.get());
    return GObjectHandle<GDBusConnection>(state_->connection.get());
}

void BusConnection::whenConnected(std::function<void(GDBusConnection*)> then) {
    State::connected(state_, [weak = std::weak_ptr(state_),
                              then = std::move(then)](const std::string& /*error*/) {
        if (const auto state = weak.lock()) {
            then(state->isUsable() ? state->connection.get() : nullptr);
        }
    });
}

std::unique_ptr<BusConnection::Subscription> BusConnection::subscribe(
    const Method& signal, std::function<void(GVariant*)> told) {
    auto record = std::make_shared<Subscription::Record>();
    record->service = signal.service;
    record->path = signal.path;
    record->interface = signal.interface;
    record->name = signal.name;
    record->told = std::move(told);
    std::erase_if(state_->records, [](const auto& each) { return each.expired(); });
    state_->records.push_back(record);
    if (state_->isUsable()) {
        record->registerAt(record, state_->connection.get());
    } else {
        // Making the connection registers it.
        State::connected(state_, [](const std::string&) {});
    }
    return std::make_unique<Subscription>(std::move(record));
}

BusConnection::Subscription::Subscription(std::shared_ptr<Record> record)
    : record_(std::move(record)) {}

BusConnection::Subscription::~Subscription() { record_->unregister(); }

}  // namespace lumatile
