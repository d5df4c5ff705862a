#include "tests/desktop/kwin/PlasmaShortcuts.h"

#include <gio/gio.h>

#include <array>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {
namespace {

// The service's numbers: the action's program runs, and what is stored for it does not count.
constexpr guint32 presentAndNew = 2 | 4;

/// The name of an action of a program that is called as its component is.
GVariant* idOf(const std::string& program, const std::string& action) {
    const std::array<const char*, 4> words{program.c_str(), action.c_str(), program.c_str(),
                                           action.c_str()};
    return g_variant_new_strv(words.data(), words.size());
}

GVariant* listOf(std::int32_t key) {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("a(ai)"));
    if (key != 0) {
        GVariantBuilder keys;
        g_variant_builder_init(&keys, G_VARIANT_TYPE("ai"));
        for (const std::int32_t each : {key, 0, 0, 0}) {
            g_variant_builder_add(&keys, "i", each);
        }
        g_variant_builder_add(&list, "(ai)", &keys);
    }
    return g_variant_builder_end(&list);
}

/// The first of a list of sequences.
std::int32_t firstIn(GVariant* reply) {
    const GVariantHandle list(g_variant_get_child_value(reply, 0));
    gint32 key = 0;
    if (g_variant_n_children(list.get()) != 0) {
        const GVariantHandle sequence(g_variant_get_child_value(list.get(), 0));
        const GVariantHandle keys(g_variant_get_child_value(sequence.get(), 0));
        g_variant_get_child(keys.get(), 0, "i", &key);
    }
    return key;
}

}  // namespace

PlasmaShortcuts::PlasmaShortcuts(const PrivateSession& session) {
    constexpr auto flags =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    bus_.reset(g_dbus_connection_new_for_address_sync(
        session.environment().at("DBUS_SESSION_BUS_ADDRESS").c_str(), flags, nullptr, nullptr,
        nullptr));
    if (!bus_) {
        throw DesktopError("no private bus");
    }
}

GVariantHandle PlasmaShortcuts::call(const char* method, GVariant* arguments) {
    constexpr int patience = 20000;
    GError* failure = nullptr;
    GVariantHandle reply(g_dbus_connection_call_sync(
        bus_.get(), "org.kde.kglobalaccel", "/kglobalaccel", "org.kde.KGlobalAccel", method,
        arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, patience, nullptr, &failure));
    const GErrorHandle owned(failure);
    if (!reply) {
        throw DesktopError(std::string(method) + ": " + failure->message);
    }
    return reply;
}

bool PlasmaShortcuts::take(const std::string& program, const std::string& action,
                           std::int32_t key) {
    call("doRegister", g_variant_new("(@as)", idOf(program, action)));
    const GVariantHandle reply =
        call("setShortcutKeys",
             g_variant_new("(@as@a(ai)u)", idOf(program, action), listOf(key), presentAndNew));
    return firstIn(reply.get()) == key;
}

void PlasmaShortcuts::giveBack(const std::string& program, const std::string& action) {
    call("unregister", g_variant_new("(ss)", program.c_str(), action.c_str()));
}

void PlasmaShortcuts::change(const std::string& program, const std::string& action,
                             std::int32_t key) {
    call("setForeignShortcutKeys",
         g_variant_new("(@as@a(ai))", idOf(program, action), listOf(key)));
}

std::int32_t PlasmaShortcuts::keyOf(const std::string& program, const std::string& action) {
    const GVariantHandle reply =
        call("shortcutKeys", g_variant_new("(@as)", idOf(program, action)));
    return firstIn(reply.get());
}

std::map<std::string, std::string> PlasmaShortcuts::actionsOf(const std::string& program) {
    const GVariantHandle reply =
        call("allActionsForComponent", g_variant_new("(@as)", idOf(program, "")));
    const GVariantHandle list(g_variant_get_child_value(reply.get(), 0));
    std::map<std::string, std::string> actions;
    for (gsize index = 0; index < g_variant_n_children(list.get()); ++index) {
        const GVariantHandle words(g_variant_get_child_value(list.get(), index));
        const char* action = nullptr;
        const char* title = nullptr;
        g_variant_get_child(words.get(), 1, "&s", &action);
        g_variant_get_child(words.get(), 3, "&s", &title);
        actions[title] = action;
    }
    return actions;
}

}  // namespace lumatile::desktop
