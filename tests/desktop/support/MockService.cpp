#include "tests/desktop/support/MockService.h"

#include <memory>
#include <utility>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

namespace {

struct NodeRelease {
    void operator()(GDBusNodeInfo* node) const { g_dbus_node_info_unref(node); }
};

}  // namespace

MockService::MockService(const std::string& address, const std::string& name, Handler handler)
    : handler_(std::move(handler)) {
    constexpr auto flags =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    connection_.reset(
        g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr));
    if (!connection_) {
        throw DesktopError("no private bus at " + address);
    }
    constexpr guint32 doNotQueue = 4;
    const GVariantHandle reply(g_dbus_connection_call_sync(
        connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "RequestName", g_variant_new("(su)", name.c_str(), doNotQueue), nullptr,
        G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    guint32 result = 0;
    if (reply) {
        g_variant_get(reply.get(), "(u)", &result);
    }
    constexpr guint32 primaryOwner = 1;
    if (result != primaryOwner) {
        throw DesktopError("the name " + name + " is taken");
    }
}

MockService::~MockService() {
    for (const guint object : objects_) {
        g_dbus_connection_unregister_object(connection_.get(), object);
    }
    g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
}

void MockService::offer(const std::string& path, const std::string& description) {
    const std::unique_ptr<GDBusNodeInfo, NodeRelease> node(
        g_dbus_node_info_new_for_xml(description.c_str(), nullptr));
    if (!node) {
        throw DesktopError("not the description of an interface: " + description);
    }
    static const GDBusInterfaceVTable table{called, nullptr, nullptr, {}};
    objects_.push_back(g_dbus_connection_register_object(
        connection_.get(), path.c_str(), node->interfaces[0], &table, this, nullptr, nullptr));
}

void MockService::emit(const std::string& path, const std::string& interface,
                       const std::string& signal, GVariant* arguments) {
    g_dbus_connection_emit_signal(connection_.get(), nullptr, path.c_str(), interface.c_str(),
                                  signal.c_str(), arguments, nullptr);
}

void MockService::called(GDBusConnection* /*connection*/, const char* /*sender*/, const char* path,
                         const char* /*interface*/, const char* method, GVariant* arguments,
                         GDBusMethodInvocation* invocation, gpointer self) {
    static_cast<MockService*>(self)->handler_({path, method, arguments, invocation});
}

}  // namespace lumatile::desktop
