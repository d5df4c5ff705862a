#include "platform/kwin/KWinGlobalShortcuts.h"

#include <array>

#include "platform/kwin/KWinTexts.h"

namespace lumatile {

namespace {

constexpr int patience = 250;  // Milliseconds.

// The service's numbers.
constexpr guint32 setPresent = 2;     // The action's program runs.
constexpr guint32 noAutoloading = 4;  // What is stored for the action does not count.
constexpr gint32 equalKeys = 0;       // Of what a key is compared with.

LoneBusConnection::Method method(const char* name) {
    return {KWinGlobalShortcuts::service, KWinGlobalShortcuts::servicePath,
            KWinGlobalShortcuts::serviceInterface, name};
}

/// A sequence of four keys, of which one is used.
GVariant* sequence(std::int32_t key) {
    const std::array<gint32, 4> keys{key, 0, 0, 0};
    GVariant* const list =
        g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, keys.data(), keys.size(), sizeof(gint32));
    return g_variant_new_tuple(&list, 1);
}

GVariant* actionId(const std::string& action, const std::string& title) {
    const std::array<const char*, 4> words{KWinGlobalShortcuts::component, action.c_str(),
                                           KWinTexts::friendlyName.data(), title.c_str()};
    return g_variant_new_strv(words.data(), words.size());
}

/// Of a list of sequences; 0 where there is none.
gint32 firstKey(GVariant* list) {
    gint32 key = 0;
    if (g_variant_n_children(list) != 0) {
        GVariantIter* keys = nullptr;
        g_variant_get_child(list, 0, "(ai)", &keys);
        g_variant_iter_next(keys, "i", &key);
        g_variant_iter_free(keys);
    }
    return key;
}

}  // namespace

std::optional<std::string> KWinGlobalShortcuts::holder(std::int32_t key) {
    const GVariantHandle reply =
        bus_.callNow(method("globalShortcutsByKey"),
                     g_variant_new("(@(ai)(i))", sequence(key), equalKeys), patience);
    if (!reply || g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(a(ssssssaiai))")) == 0) {
        return std::nullopt;
    }
    const GVariantHandle list(g_variant_get_child_value(reply.get(), 0));
    GVariantIter each;
    g_variant_iter_init(&each, list.get());
    const char* title = nullptr;
    const char* program = nullptr;
    const char* programName = nullptr;
    while (g_variant_iter_next(&each, "(&s&s&s&s&s&saiai)", nullptr, &title, &program, &programName,
                               nullptr, nullptr, nullptr, nullptr) != 0) {
        if (std::string_view(program) != component) {
            return KWinTexts::holder(title, programName);
        }
    }
    return std::nullopt;
}

KWinGlobalShortcuts::Taking KWinGlobalShortcuts::take(const std::string& action,
                                                      const std::string& title, std::int32_t key) {
    GVariant* const id = g_variant_ref_sink(actionId(action, title));
    const GVariantHandle kept(id);
    bus_.callNow(method("doRegister"), g_variant_new("(@as)", id), patience);
    GVariant* const wanted = sequence(key);
    const GVariantHandle reply =
        bus_.callNow(method("setShortcutKeys"),
                     g_variant_new("(@as@a(ai)u)", id, g_variant_new_array(nullptr, &wanted, 1),
                                   setPresent | noAutoloading),
                     patience);
    if (!reply) {
        return Taking::silent;
    }
    if (g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(a(ai))")) == 0) {
        return Taking::refused;
    }
    const GVariantHandle list(g_variant_get_child_value(reply.get(), 0));
    return firstKey(list.get()) == key ? Taking::taken : Taking::refused;
}

std::optional<KWinGlobalShortcuts::Change> KWinGlobalShortcuts::changeIn(GVariant* arguments) {
    if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(asa(ai))")) == 0) {
        return std::nullopt;
    }
    const GVariantHandle names(g_variant_get_child_value(arguments, 0));
    const GVariantHandle keys(g_variant_get_child_value(arguments, 1));
    if (g_variant_n_children(names.get()) < 2) {
        return std::nullopt;
    }
    const char* program = nullptr;
    const char* action = nullptr;
    g_variant_get_child(names.get(), 0, "&s", &program);
    g_variant_get_child(names.get(), 1, "&s", &action);
    return std::string_view(program) == component
               ? std::optional(Change{action, firstKey(keys.get())})
               : std::nullopt;
}

void KWinGlobalShortcuts::giveBack(const std::string& action) {
    bus_.callNow(method("unregister"), g_variant_new("(ss)", component, action.c_str()), patience);
}

}  // namespace lumatile
