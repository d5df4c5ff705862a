#include "platform/freedesktop/bus/DesktopNotifications.h"

#include <array>
#include <utility>

namespace lumatile {

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";
constexpr BusConnection::Method notify{service, path, service, "Notify"};
constexpr BusConnection::Method actionInvoked{service, path, service, "ActionInvoked"};
constexpr std::string_view actionKey = "act";
constexpr int patience = 25000;        // The service may have to be started.
constexpr int asTheServiceLikes = -1;  // How long it is shown.

}  // namespace

void DesktopNotifications::listen() {
    if (actions_) {
        return;
    }
    actions_ = session_.subscribe(actionInvoked, [this](GVariant* arguments) {
        if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(us)")) == 0) {
            return;
        }
        guint number = 0;
        const char* key = nullptr;
        g_variant_get(arguments, "(u&s)", &number, &key);
        if (number == shown_ && number != 0 && key == actionKey) {
            shown_ = 0;
            // A copy, since whoever is called may show the next one.
            if (const auto chosen = std::exchange(chosen_, nullptr)) {
                chosen();
            }
        }
    });
}

void DesktopNotifications::show(const Notice& notice, std::function<void()> chosen) {
    listen();
    chosen_ = std::move(chosen);
    const std::string body = escaped(notice.text);
    const std::array<const char*, 3> actions{notice.action.empty() ? nullptr : actionKey.data(),
                                             notice.action.c_str(), nullptr};
    GVariantBuilder hints;
    g_variant_builder_init(&hints, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&hints, "{sv}", "desktop-entry", g_variant_new_string("lumatile"));
    session_.call(
        notify,
        g_variant_new("(susss^asa{sv}i)", "Lumatile", shown_, "lumatile", notice.title.c_str(),
                      body.c_str(), actions.data(), &hints, asTheServiceLikes),
        patience, true, lifeline_.guard([this](const BusConnection::Reply& reply) {
            if (reply.value != nullptr &&
                g_variant_is_of_type(reply.value, G_VARIANT_TYPE("(u)")) != 0) {
                g_variant_get(reply.value, "(u)", &shown_);
            }
        }));
}

std::string DesktopNotifications::escaped(std::string_view text) {
    std::string result;
    for (const char byte : text) {
        switch (byte) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            default:
                result += byte;
        }
    }
    return result;
}

}  // namespace lumatile
