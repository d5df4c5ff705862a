#include "tests/desktop/control/CallFlood.h"

#include <utility>

#include "platform/freedesktop/bus/ControlInterface.h"
#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

CallFlood::CallFlood(const std::string& address, std::string name)
    : connection_(g_dbus_connection_new_for_address_sync(
          address.c_str(),
          static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                            G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
          nullptr, nullptr, nullptr)),
      name_(std::move(name)) {
    if (!connection_) {
        throw DesktopError("there is no bus");
    }
}

void CallFlood::switchEdgeJitter(int times) {
    const auto answered = [](GObject* connection, GAsyncResult* result, gpointer data) {
        auto* const flood = static_cast<CallFlood*>(data);
        const GVariantHandle reply(
            g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr));
        ++flood->answered_;
        flood->refused_ += reply ? 0 : 1;
    };
    for (int time = 0; time < times; ++time) {
        g_dbus_connection_call(
            connection_.get(), name_.c_str(), ControlInterface::path, ControlInterface::name,
            "SetProtection",
            g_variant_new("(sb)", "edgeJitter", static_cast<gboolean>(time % 2 == 1)), nullptr,
            G_DBUS_CALL_FLAGS_NONE, G_MAXINT, nullptr, answered, this);
    }
}

void CallFlood::listen() {
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
}

void CallFlood::awaitAnswer() {
    for (const int before = answered_; answered_ == before;) {
        g_main_context_iteration(nullptr, TRUE);
    }
}

}  // namespace lumatile::desktop
