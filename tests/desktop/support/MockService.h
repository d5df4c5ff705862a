#pragma once

#include <gio/gio.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/freedesktop/glib/GLibHandles.h"

namespace lumatile::desktop {

/// A service on a private bus that answers as the test says.
class MockService {
public:
    /// A call that has arrived.
    struct Call {
        std::string path;
        std::string method;
        GVariant* arguments;
        GDBusMethodInvocation* invocation;  ///< To be answered once, now or later.

        void answer(GVariant* value) const {
            g_dbus_method_invocation_return_value(invocation, value);
        }
        void fail(const char* errorName, const char* text) const {
            g_dbus_method_invocation_return_dbus_error(invocation, errorName, text);
        }
    };
    using Handler = std::function<void(const Call&)>;

    /// Takes `name` on the bus at `address`.
    MockService(const std::string& address, const std::string& name, Handler handler);
    MockService(const MockService&) = delete;
    MockService& operator=(const MockService&) = delete;
    ~MockService();

    /// Offers an object with the one interface that `description` (XML of the bus) holds.
    void offer(const std::string& path, const std::string& description);

    GDBusConnection* connection() const { return connection_.get(); }

    void emit(const std::string& path, const std::string& interface, const std::string& signal,
              GVariant* arguments);

private:
    static void called(GDBusConnection* connection, const char* sender, const char* path,
                       const char* interface, const char* method, GVariant* arguments,
                       GDBusMethodInvocation* invocation, gpointer self);

    Handler handler_;
    GObjectHandle<GDBusConnection> connection_;
    std::vector<guint> objects_;
};

}  // namespace lumatile::desktop
