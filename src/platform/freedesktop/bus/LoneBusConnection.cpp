#include "platform/freedesktop/bus/LoneBusConnection.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>
#include <vector>

#include "base/Lifeline.h"

namespace lumatile {

namespace {

using namespace std::chrono_literals;

constexpr auto asClient = static_cast<GDBusConnectionFlags>(
    G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);

constexpr const char* bus = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";
constexpr int busPatience = 1000;  // Milliseconds. The bus itself answers at once.

// What one turn of the program's loop may take of messages, however many there are.
constexpr auto longestTurn = 10ms;

struct ContextRelease {
    void operator()(GMainContext* context) const {
        g_main_context_release(context);
        g_main_context_unref(context);
    }
};
/// Of this thread alone, as long as it is held.
using ContextHandle = std::unique_ptr<GMainContext, ContextRelease>;

ContextHandle held(GMainContext* context) {
    g_main_context_acquire(context);
    return ContextHandle(context);
}

struct NodeRelease {
    void operator()(GDBusNodeInfo* node) const { g_dbus_node_info_unref(node); }
};

/// Whatever the library begins in this scope comes back through `context`.
class ThreadDefault {
public:
    explicit ThreadDefault(GMainContext* context) : context_(context) {
        g_main_context_push_thread_default(context);
    }
    ThreadDefault(const ThreadDefault&) = delete;
    ThreadDefault& operator=(const ThreadDefault&) = delete;
    ~ThreadDefault() { g_main_context_pop_thread_default(context_); }

private:
    GMainContext* context_;
};

/// Serves a context from the default one. The library's own thread wakes the context through one
/// descriptor that stays the same; time-outs of calls are taken into account each turn.
struct ServingSource {
    GSource base;
    GMainContext* context;
    gpointer descriptor;

    static ServingSource* of(GSource* source) {
        // NOLINTNEXTLINE(*-reinterpret-cast): the library's sources are laid out so.
        return reinterpret_cast<ServingSource*>(source);
    }

    static gboolean prepare(GSource* source, gint* timeout) {
        GMainContext* const context = of(source)->context;
        gint priority = 0;
        const bool isReady = g_main_context_prepare(context, &priority) != 0;
        std::array<GPollFD, 4> descriptors{};
        g_main_context_query(context, std::numeric_limits<gint>::max(), timeout, descriptors.data(),
                             static_cast<gint>(descriptors.size()));
        return isReady ? TRUE : FALSE;
    }

    static gboolean check(GSource* source) { return g_main_context_pending(of(source)->context); }

    static gboolean dispatch(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
        GMainContext* const context = of(source)->context;
        const auto end = LoneBusConnection::Clock::now() + longestTurn;
        // The source may go within the dispatch, the context with it.
        const ContextHandle kept = held(g_main_context_ref(context));
        while (g_main_context_iteration(context, FALSE) != 0 &&
               LoneBusConnection::Clock::now() < end) {
        }
        return G_SOURCE_CONTINUE;
    }
};

GSourceFuncs servingFunctions{ServingSource::prepare,
                              ServingSource::check,
                              ServingSource::dispatch,
                              nullptr,
                              nullptr,
                              nullptr};

/// Drops calls of everybody but the peer. Runs on the library's thread, on texts that never change.
GDBusMessage* dropStrangers(GDBusConnection* /*connection*/, GDBusMessage* message,
                            gboolean isIncoming, gpointer peer) {
    if (isIncoming == 0 ||
        g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL) {
        return message;
    }
    const char* const sender = g_dbus_message_get_sender(message);
    if (sender != nullptr && *static_cast<const std::string*>(peer) == sender) {
        return message;
    }
    g_object_unref(message);
    return nullptr;
}

std::string ownerOf(GDBusConnection* connection, const std::string& name) {
    const GVariantHandle reply(g_dbus_connection_call_sync(
        connection, bus, busPath, bus, "GetNameOwner", g_variant_new("(s)", name.c_str()),
        G_VARIANT_TYPE("(s)"), G_DBUS_CALL_FLAGS_NONE, busPatience, nullptr, nullptr));
    const char* owner = nullptr;
    if (reply) {
        g_variant_get(reply.get(), "(&s)", &owner);
    }
    return owner == nullptr ? "" : owner;
}

const char* orAny(const std::string& text) { return text.empty() ? nullptr : text.c_str(); }

}  // namespace

struct LoneBusConnection::State {
    ContextHandle context = held(g_main_context_new());
    GObjectHandle<GDBusConnection> connection;
    std::string uniqueName;
    std::string peer;
    bool isPeerGone = false;
    std::function<void()> lost;
    gulong closedSignal = 0;
    GSource* serving = nullptr;
    guint filter = 0;
    std::vector<guint> objects;
    std::vector<guint> subscriptions;
    Lifeline lifeline;

    State() = default;
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    ~State() {
        if (serving != nullptr) {
            g_source_destroy(serving);
            g_source_unref(serving);
        }
        if (!connection) {
            return;
        }
        for (const guint object : objects) {
            g_dbus_connection_unregister_object(connection.get(), object);
        }
        for (const guint subscription : subscriptions) {
            g_dbus_connection_signal_unsubscribe(connection.get(), subscription);
        }
        // Where the peer is not there it has come to neither.
        if (closedSignal != 0) {
            g_signal_handler_disconnect(connection.get(), closedSignal);
        }
        if (filter != 0) {
            g_dbus_connection_remove_filter(connection.get(), filter);
        }
        // What was sent last shall arrive.
        g_dbus_connection_flush_sync(connection.get(), nullptr, nullptr);
        g_dbus_connection_close_sync(connection.get(), nullptr, nullptr);
        // What the library gives back, it gives back from here.
        while (g_main_context_iteration(context.get(), FALSE) != 0) {
        }
    }

    void noteLost() {
        if (const auto tell = std::exchange(lost, nullptr)) {
            tell();
        }
    }

    void serveFromMainLoop() {
        serving = g_source_new(&servingFunctions, sizeof(ServingSource));
        ServingSource* const own = ServingSource::of(serving);
        own->context = context.get();
        gint timeout = -1;
        std::array<GPollFD, 1> descriptor{};
        gint priority = 0;
        g_main_context_prepare(context.get(), &priority);
        g_main_context_query(context.get(), std::numeric_limits<gint>::max(), &timeout,
                             descriptor.data(), 1);
        own->descriptor = g_source_add_unix_fd(serving, descriptor[0].fd, G_IO_IN);
        g_source_set_can_recurse(serving, FALSE);
        g_source_attach(serving, nullptr);
    }
};

std::unique_ptr<LoneBusConnection> LoneBusConnection::open(const std::string& address,
                                                           const std::string& wellKnownName) {
    if (address.empty()) {
        return nullptr;
    }
    auto state = std::make_unique<State>();
    {
        const ThreadDefault scope(state->context.get());
        state->connection.reset(g_dbus_connection_new_for_address_sync(address.c_str(), asClient,
                                                                       nullptr, nullptr, nullptr));
    }
    if (!state->connection) {
        return nullptr;
    }
    g_dbus_connection_set_exit_on_close(state->connection.get(), FALSE);
    state->uniqueName = g_dbus_connection_get_unique_name(state->connection.get());
    state->peer = ownerOf(state->connection.get(), wellKnownName);
    if (state->peer.empty()) {
        return nullptr;
    }
    state->filter = g_dbus_connection_add_filter(
        state->connection.get(), dropStrangers, new std::string(state->peer),
        [](gpointer peer) { delete static_cast<std::string*>(peer); });
    state->closedSignal =
        g_signal_connect(state->connection.get(), "closed",
                         G_CALLBACK(+[](GDBusConnection* /*connection*/,
                                        gboolean /*remotePeerVanished*/, GError* /*error*/,
                                        gpointer data) { static_cast<State*>(data)->noteLost(); }),
                         state.get());
    std::unique_ptr<LoneBusConnection> made(new LoneBusConnection(std::move(state)));
    State& own = *made->state_;
    made->listen({bus, busPath, bus, "NameOwnerChanged"}, [&own](GVariant* arguments) {
        const char* name = nullptr;
        const char* before = nullptr;
        const char* now = nullptr;
        if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(sss)")) != 0) {
            g_variant_get(arguments, "(&s&s&s)", &name, &before, &now);
            if (own.peer == name && *now == '\0') {
                own.isPeerGone = true;
                own.noteLost();
            }
        }
    });
    own.serveFromMainLoop();
    return made;
}

LoneBusConnection::LoneBusConnection(std::unique_ptr<State> state) : state_(std::move(state)) {}

LoneBusConnection::~LoneBusConnection() = default;

const std::string& LoneBusConnection::uniqueName() const { return state_->uniqueName; }

const std::string& LoneBusConnection::peer() const { return state_->peer; }

bool LoneBusConnection::isLost() const {
    return state_->isPeerGone || g_dbus_connection_is_closed(state_->connection.get()) != 0;
}

void LoneBusConnection::whenLost(std::function<void()> lost) { state_->lost = std::move(lost); }

void LoneBusConnection::serve(const std::string& path, const char* description,
                              std::function<void(const Call&)> handler) {
    using Handler = std::function<void(const Call&)>;
    const std::unique_ptr<GDBusNodeInfo, NodeRelease> node(
        g_dbus_node_info_new_for_xml(description, nullptr));
    static const GDBusInterfaceVTable table{
        [](GDBusConnection* /*connection*/, const char* /*sender*/, const char* /*path*/,
           const char* /*interface*/, const char* method, GVariant* arguments,
           GDBusMethodInvocation* invocation, gpointer data) {
            // A copy: what is called may take the object away.
            const Handler handle = *static_cast<Handler*>(data);
            handle({method, arguments, invocation});
        },
        nullptr,
        nullptr,
        {}};
    const ThreadDefault scope(state_->context.get());
    const guint number = g_dbus_connection_register_object(
        state_->connection.get(), path.c_str(), node->interfaces[0], &table,
        new Handler(state_->lifeline.guard(std::move(handler))),
        [](gpointer data) { delete static_cast<Handler*>(data); }, nullptr);
    if (number != 0) {
        state_->objects.push_back(number);
    }
}

void LoneBusConnection::listen(const Signal& signal, std::function<void(GVariant*)> told) {
    using Told = std::function<void(GVariant*)>;
    const ThreadDefault scope(state_->context.get());
    state_->subscriptions.push_back(g_dbus_connection_signal_subscribe(
        state_->connection.get(), orAny(signal.service), orAny(signal.interface),
        orAny(signal.name), orAny(signal.path), nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection* /*connection*/, const char* /*sender*/, const char* /*path*/,
           const char* /*interface*/, const char* /*name*/, GVariant* arguments, gpointer data) {
            const Told tell = *static_cast<Told*>(data);
            tell(arguments);
        },
        new Told(state_->lifeline.guard(std::move(told))),
        [](gpointer data) { delete static_cast<Told*>(data); }));
}

GVariantHandle LoneBusConnection::callNow(const Method& method, GVariant* arguments,
                                          int milliseconds) {
    return GVariantHandle(g_dbus_connection_call_sync(
        state_->connection.get(), method.service.c_str(), method.path.c_str(),
        method.interface.c_str(), method.name.c_str(), arguments, nullptr,
        G_DBUS_CALL_FLAGS_NO_AUTO_START, milliseconds, nullptr, nullptr));
}

void LoneBusConnection::call(const Method& method, GVariant* arguments, int milliseconds,
                             std::function<void(GVariant*)> done) {
    using Done = std::function<void(GVariant*)>;
    const ThreadDefault scope(state_->context.get());
    g_dbus_connection_call(
        state_->connection.get(), method.service.c_str(), method.path.c_str(),
        method.interface.c_str(), method.name.c_str(), arguments, nullptr,
        G_DBUS_CALL_FLAGS_NO_AUTO_START, milliseconds, nullptr,
        [](GObject* source, GAsyncResult* result, gpointer data) {
            const std::unique_ptr<Done> kept(static_cast<Done*>(data));
            const GVariantHandle reply(
                g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
            (*kept)(reply.get());
        },
        new Done(state_->lifeline.guard(std::move(done))));
}

bool LoneBusConnection::waitUntil(const std::function<bool()>& isDone, Clock::time_point deadline) {
    // Ends the waiting below when nothing comes.
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    GSource* const end = g_timeout_source_new(static_cast<guint>(std::max<long>(left.count(), 0)));
    g_source_set_callback(
        end, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr, nullptr);
    g_source_attach(end, state_->context.get());
    bool done = isDone();
    while (!done && !isLost() && Clock::now() < deadline) {
        g_main_context_iteration(state_->context.get(), TRUE);
        done = isDone();
    }
    g_source_destroy(end);
    g_source_unref(end);
    return done;
}

void LoneBusConnection::dispatch() {
    const auto end = Clock::now() + longestTurn;
    while (g_main_context_iteration(state_->context.get(), FALSE) != 0 && Clock::now() < end) {
    }
}

}  // namespace lumatile
