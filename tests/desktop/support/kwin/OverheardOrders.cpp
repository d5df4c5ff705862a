#include "tests/desktop/support/kwin/OverheardOrders.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <utility>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/kwin/SessionWait.h"

namespace lumatile::desktop {
namespace {

using Json = nlohmann::json;

std::optional<double> number(const Json& order, const char* name) {
    const auto found = order.find(name);
    return found == order.end() ? std::nullopt : std::optional(found->get<double>());
}

}  // namespace

Rect OverheardOrders::Placing::appliedTo(const Rect& frame) const {
    return {x.value_or(frame.x), y.value_or(frame.y), width.value_or(frame.width),
            height.value_or(frame.height)};
}

OverheardOrders::OverheardOrders(const PrivateSession& session, KWinProbe& probe) : probe_(probe) {
    constexpr auto flags =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    connection_.reset(g_dbus_connection_new_for_address_sync(
        session.environment().at("DBUS_SESSION_BUS_ADDRESS").c_str(), flags, nullptr, nullptr,
        nullptr));
    if (!connection_) {
        throw DesktopError("no private bus");
    }
    filter_ = g_dbus_connection_add_filter(connection_.get(), heard, this, nullptr);
    // KWin's script asks for its orders, so they are answers.
    const std::array<const char*, 2> rules{"type='method_return'", nullptr};
    const GVariantHandle reply(
        g_dbus_connection_call_sync(connection_.get(), "org.freedesktop.DBus",
                                    "/org/freedesktop/DBus", "org.freedesktop.DBus.Monitoring",
                                    "BecomeMonitor", g_variant_new("(^asu)", rules.data(), 0),
                                    nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    if (!reply) {
        throw DesktopError("the private bus lets nobody listen");
    }
}

OverheardOrders::~OverheardOrders() {
    g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
    g_dbus_connection_remove_filter(connection_.get(), filter_);
}

GDBusMessage* OverheardOrders::heard(GDBusConnection* /*connection*/, GDBusMessage* message,
                                     gboolean isIncoming, gpointer self) {
    GVariant* const body = g_dbus_message_get_body(message);
    if (isIncoming == FALSE || body == nullptr ||
        g_variant_is_of_type(body, G_VARIANT_TYPE("(s)")) == FALSE) {
        return message;
    }
    const char* text = nullptr;
    g_variant_get(body, "(&s)", &text);
    {
        auto* const orders = static_cast<OverheardOrders*>(self);
        const std::scoped_lock lock(orders->mutex_);
        orders->texts_.emplace_back(text);
    }
    g_main_context_wakeup(nullptr);
    return message;
}

std::vector<std::string> OverheardOrders::texts() {
    const std::scoped_lock lock(mutex_);
    return texts_;
}

void OverheardOrders::catchUp() {
    // The probe's own order goes the same way, so that what was asked before it is known with it.
    probe_.sync();
    const std::string last = probe_.lastOrder();
    const bool isHeard = waitInSession([&] {
        const std::vector<std::string> all = texts();
        return std::find(all.begin(), all.end(), last) != all.end();
    });
    if (!isHeard) {
        throw DesktopError("nothing is heard on the bus");
    }
}

std::vector<Json> OverheardOrders::ordersAbout(const std::string& id) {
    catchUp();
    std::vector<Json> result;
    for (const std::string& text : texts()) {
        const Json orders = Json::parse(text, nullptr, false);
        if (!orders.is_array()) {
            continue;
        }
        for (const Json& order : orders) {
            if (order.is_object() && order.value("id", "") == id) {
                result.push_back(order);
            }
        }
    }
    return result;
}

std::vector<OverheardOrders::Placing> OverheardOrders::placings(const std::string& id) {
    std::vector<Placing> result;
    for (const Json& order : ordersAbout(id)) {
        if (order.value("do", "") == "place") {
            result.push_back({id, number(order, "x"), number(order, "y"), number(order, "width"),
                              number(order, "height")});
        }
    }
    return result;
}

std::vector<std::string> OverheardOrders::otherThanMoves(const std::string& id) {
    std::vector<std::string> result;
    for (const Json& order : ordersAbout(id)) {
        if (order.value("do", "") != "place" || order.contains("width") ||
            order.contains("height")) {
            result.push_back(order.dump());
        }
    }
    return result;
}

std::size_t OverheardOrders::messages() {
    catchUp();
    std::size_t count = 0;
    for (const std::string& text : texts()) {
        const Json orders = Json::parse(text, nullptr, false);
        if (orders.is_array() && std::any_of(orders.begin(), orders.end(), [](const Json& order) {
                return order.is_object() && order.contains("id");
            })) {
            ++count;
        }
    }
    return count;
}

std::vector<std::string> OverheardOrders::otherThanPlacings(const std::string& id) {
    std::vector<std::string> result;
    for (const Json& order : ordersAbout(id)) {
        if (order.value("do", "") != "place") {
            result.push_back(order.dump());
        }
    }
    return result;
}

void OverheardOrders::forget() {
    catchUp();
    const std::scoped_lock lock(mutex_);
    texts_.clear();
}

}  // namespace lumatile::desktop
