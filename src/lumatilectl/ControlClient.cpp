#include "lumatilectl/ControlClient.h"

#include "platform/freedesktop/bus/BusConnection.h"
#include "platform/freedesktop/bus/ControlInterface.h"
#include "platform/freedesktop/bus/DisplayToken.h"

namespace lumatile {

namespace {

// A command may wait for a window manager for a quarter of a second, twice.
constexpr int patience = 5000;

}  // namespace

ControlClient::ControlClient(const std::string& address, std::string_view display)
    : name_(std::string(ControlInterface::busNamePrefix) + displayToken(display)),
      connection_(BusConnection(address).connectNow()) {}

ControlClient::Answer ControlClient::ask(const char* verb, GVariant* arguments) const {
    if (!connection_) {
        const GVariantHandle unused(arguments == nullptr ? nullptr : g_variant_ref_sink(arguments));
        return {nullptr, false};
    }
    GError* error = nullptr;
    GVariantHandle value(g_dbus_connection_call_sync(
        connection_.get(), name_.c_str(), ControlInterface::path, ControlInterface::name, verb,
        arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, patience, nullptr, &error));
    const GErrorHandle failure(error);
    if (value) {
        return {std::move(value)};
    }
    const bool isMissing =
        g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) != FALSE ||
        g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER) != FALSE;
    // Without the name of the error in front.
    g_dbus_error_strip_remote_error(error);
    return {nullptr, !isMissing, error->message};
}

}  // namespace lumatile
