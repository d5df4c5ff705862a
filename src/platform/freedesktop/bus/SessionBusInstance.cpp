#include "platform/freedesktop/bus/SessionBusInstance.h"

#include <gio/gio.h>

#include <optional>
#include <utility>

#include "platform/freedesktop/bus/BusConnection.h"
#include "platform/freedesktop/bus/BusObject.h"
#include "platform/freedesktop/bus/DisplayToken.h"
#include "platform/freedesktop/glib/GLibHandles.h"
#include "platform/freedesktop/glib/MainLoopSource.h"

namespace lumatile {

namespace {

constexpr int answerMilliseconds = 5000;

constexpr const char* interfaceName = "org.lumatile.Lumatile";
constexpr const char* objectPath = "/org/lumatile/Lumatile";
constexpr const char* openSettingsMethod = "OpenSettings";
constexpr const char* description =
    "<node><interface name=\"org.lumatile.Lumatile\"><method name=\"OpenSettings\"/></interface>"
    "</node>";

/// Asks the program that has the name to open its settings.
InstanceClaim askOther(GDBusConnection* connection, const std::string& name) {
    GError* failure = nullptr;
    const GVariantHandle answer(g_dbus_connection_call_sync(
        connection, name.c_str(), objectPath, interfaceName, openSettingsMethod, nullptr, nullptr,
        G_DBUS_CALL_FLAGS_NO_AUTO_START, answerMilliseconds, nullptr, &failure));
    const GErrorHandle error(failure);
    if (answer) {
        return InstanceClaim::second;
    }
    // The last one is the bus's word for a program that has ended with the question unanswered; one
    // that takes too long is known by the library's own error.
    const bool isGone =
        g_error_matches(failure, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) != FALSE ||
        g_error_matches(failure, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER) != FALSE ||
        g_error_matches(failure, G_DBUS_ERROR, G_DBUS_ERROR_NO_REPLY) != FALSE;
    return isGone ? InstanceClaim::unavailable : InstanceClaim::unreachable;
}

}  // namespace

SessionBusInstance::SessionBusInstance(BusConnection& session, std::string_view display,
                                       std::function<void()> openSettings)
    : session_(session), name_(nameOn(display)), openSettings_(std::move(openSettings)) {}

SessionBusInstance::~SessionBusInstance() = default;

std::string SessionBusInstance::nameOn(std::string_view display) {
    return std::string(interfaceName) + "." + displayToken(display);
}

InstanceClaim SessionBusInstance::claim() {
    const GObjectHandle<GDBusConnection> connection = session_.connectNow();
    if (!connection) {
        return InstanceClaim::unavailable;
    }
    // Before the name, so that nobody finds the one without the other.
    object_ = std::make_unique<BusObject>(
        connection.get(), objectPath, description, [this](const BusObject::Call& call) {
            // The answer does not wait for the window.
            g_dbus_method_invocation_return_value(call.invocation, nullptr);
            MainLoopSource::once(lifeline_.guard([this] { openSettings_(); }));
        });
    // The other one may end between the two questions; then the name is free.
    for (int attempt = 0; attempt < 2; ++attempt) {
        const std::optional<bool> isOurs =
            BusObject::requestNameNow(connection.get(), name_, answerMilliseconds);
        if (!isOurs) {
            return InstanceClaim::unavailable;
        }
        if (*isOurs) {
            return InstanceClaim::first;
        }
        const InstanceClaim answered = askOther(connection.get(), name_);
        if (answered != InstanceClaim::unavailable) {
            return answered;
        }
    }
    return InstanceClaim::unreachable;
}

InstanceClaim SessionBusInstance::ask() {
    const GObjectHandle<GDBusConnection> connection = session_.connectNow();
    return connection ? askOther(connection.get(), name_) : InstanceClaim::unavailable;
}

}  // namespace lumatile
