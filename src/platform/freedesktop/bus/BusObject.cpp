#include "platform/freedesktop/bus/BusObject.h"

#include <utility>

#include "platform/freedesktop/glib/GLibHandles.h"

namespace lumatile {

namespace {

struct NodeRelease {
    void operator()(GDBusNodeInfo* node) const { g_dbus_node_info_unref(node); }
};

constexpr const char* bus = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";
constexpr int usualPatience = -1;

// What is asked of the bus, and what it answers.
constexpr guint32 queue = 0;
constexpr guint32 doNotQueue = 4;
constexpr guint32 primaryOwner = 1;
constexpr guint32 inQueue = 2;
constexpr guint32 alreadyOwner = 4;

GVariant* request(const std::string& name, guint32 flags) {
    return g_variant_new("(su)", name.c_str(), flags);
}

void nameAnswered(GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<std::function<void()>> isTaken(static_cast<std::function<void()>*>(data));
    const GVariantHandle reply(
        g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
    guint32 answer = 0;
    if (reply) {
        g_variant_get(reply.get(), "(u)", &answer);
    }
    if (answer == inQueue) {
        (*isTaken)();
    }
}

}  // namespace

struct BusObject::State {
    GObjectHandle<GDBusConnection> connection;
    Handler handler;
    guint number = 0;

    static void called(GDBusConnection* /*connection*/, const char* /*sender*/,
                       const char* /*path*/, const char* /*interface*/, const char* method,
                       GVariant* arguments, GDBusMethodInvocation* invocation, gpointer self) {
        // A copy: what is called may take this object away.
        const Handler handler = static_cast<State*>(self)->handler;
        handler({method, arguments, invocation});
    }
};

BusObject::BusObject(GDBusConnection* connection, const char* path, const char* description,
                     Handler handler)
    : state_(std::make_unique<State>()) {
    g_object_ref(connection);
    state_->connection.reset(connection);
    state_->handler = std::move(handler);
    const std::unique_ptr<GDBusNodeInfo, NodeRelease> node(
        g_dbus_node_info_new_for_xml(description, nullptr));
    static const GDBusInterfaceVTable table{State::called, nullptr, nullptr, {}};
    state_->number = g_dbus_connection_register_object(connection, path, node->interfaces[0],
                                                       &table, state_.get(), nullptr, nullptr);
}

BusObject::~BusObject() {
    if (state_->number != 0) {
        g_dbus_connection_unregister_object(state_->connection.get(), state_->number);
    }
}

void BusObject::requestName(GDBusConnection* connection, const std::string& name,
                            std::function<void()> isTaken) {
    g_dbus_connection_call(connection, bus, busPath, bus, "RequestName", request(name, queue),
                           G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, usualPatience, nullptr,
                           nameAnswered, new std::function<void()>(std::move(isTaken)));
}

std::optional<bool> BusObject::requestNameNow(GDBusConnection* connection, const std::string& name,
                                              int milliseconds) {
    const GVariantHandle reply(g_dbus_connection_call_sync(
        connection, bus, busPath, bus, "RequestName", request(name, doNotQueue),
        G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, milliseconds, nullptr, nullptr));
    if (!reply) {
        return std::nullopt;
    }
    guint32 result = 0;
    g_variant_get(reply.get(), "(u)", &result);
    return result == primaryOwner || result == alreadyOwner;
}

}  // namespace lumatile
