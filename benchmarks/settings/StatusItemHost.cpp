#include "benchmarks/settings/StatusItemHost.h"

#include <string_view>

#include "platform/freedesktop/glib/GLibHandles.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/MainLoop.h"

namespace lumatile::benchmark {

namespace {

using desktop::DesktopError;

constexpr const char* description = R"(<node>
  <interface name="org.kde.StatusNotifierWatcher">
    <method name="RegisterStatusNotifierItem"><arg name="service" type="s" direction="in"/></method>
    <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
    <property name="ProtocolVersion" type="i" access="read"/>
    <signal name="StatusNotifierHostRegistered"/>
  </interface>
</node>)";

}  // namespace

StatusItemHost::StatusItemHost(const std::string& address)
    : address_(address),
      watcher_(address, "org.kde.StatusNotifierWatcher",
               [this](const desktop::MockService::Call& call) { answer(call); }) {
    watcher_.offer("/StatusNotifierWatcher", description);
}

void StatusItemHost::answer(const desktop::MockService::Call& call) {
    if (call.method == "RegisterStatusNotifierItem") {
        const char* service = nullptr;
        g_variant_get(call.arguments, "(&s)", &service);
        item_ = service;
        call.answer(nullptr);
    } else if (call.method == "Get") {
        const char* name = nullptr;
        g_variant_get(call.arguments, "(&s&s)", nullptr, &name);
        call.answer(g_variant_new("(v)", std::string_view(name) == "IsStatusNotifierHostRegistered"
                                             ? g_variant_new_boolean(TRUE)
                                             : g_variant_new_int32(0)));
    } else {
        call.fail("org.freedesktop.DBus.Error.UnknownMethod", call.method.c_str());
    }
}

void StatusItemHost::waitForItem() {
    if (!desktop::runUntil([this] { return !item_.empty(); })) {
        throw DesktopError("no status item");
    }
    constexpr int patience = 5000;
    const GVariantHandle picture(g_dbus_connection_call_sync(
        watcher_.connection(), item_.c_str(), "/StatusNotifierItem",
        "org.freedesktop.DBus.Properties", "Get",
        g_variant_new("(ss)", "org.kde.StatusNotifierItem", "IconPixmap"), G_VARIANT_TYPE("(v)"),
        G_DBUS_CALL_FLAGS_NONE, patience, nullptr, nullptr));
    if (!picture) {
        throw DesktopError("the status item has no picture");
    }
}

}  // namespace lumatile::benchmark
