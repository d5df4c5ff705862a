#include "platform/kwin/KWinGlobalShortcuts.h"

#include <algorithm>
#include <array>
#include <chrono>

#include "platform/kwin/KWinTexts.h"

namespace lumatile {

namespace {

constexpr auto patience = std::chrono::milliseconds(250);

// Milliseconds, for what nobody waits for. The service may be busy, as at login.
constexpr int longPatience = 20000;

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

KWinGlobalShortcuts::Outcome KWinGlobalShortcuts::take(const std::string& action,
                                                       const std::string& title, std::int32_t key) {
    const auto end = LoneBusConnection::Clock::now() + patience;
    const auto left = [end] {
        return std::max(1, static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(
                                                end - LoneBusConnection::Clock::now())
                                                .count()));
    };
    const GVariantHandle holders =
        bus_.callNow(method("globalShortcutsByKey"),
                     g_variant_new("(@(ai)(i))", sequence(key), equalKeys), left());
    if (!holders) {
        return {Taking::silent, {}};
    }
    if (const std::optional<std::string> holder = holderIn(holders.get(), action)) {
        return {Taking::refused, *holder};
    }
    GVariant* const id = g_variant_ref_sink(actionId(action, title));
    const GVariantHandle kept(id);
    bus_.call(method("doRegister"), g_variant_new("(@as)", id), longPatience, [](GVariant*) {});
    GVariant* const wanted = sequence(key);
    const GVariantHandle reply =
        bus_.callNow(method("setShortcutKeys"),
                     g_variant_new("(@as@a(ai)u)", id, g_variant_new_array(nullptr, &wanted, 1),
                                   setPresent | noAutoloading),
                     left());
    if (!reply) {
        return {Taking::silent, {}};
    }
    if (g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(a(ai))")) != 0) {
        const GVariantHandle list(g_variant_get_child_value(reply.get(), 0));
        if (firstKey(list.get()) == key) {
            return {Taking::taken, {}};
        }
    }
    giveBack(action);
    return {Taking::refused, {}};
}

std::optional<std::string> KWinGlobalShortcuts::holderIn(GVariant* holders,
                                                         const std::string& action) {
    if (g_variant_is_of_type(holders, G_VARIANT_TYPE("(a(ssssssaiai))")) == 0) {
        return std::nullopt;
    }
    const GVariantHandle list(g_variant_get_child_value(holders, 0));
    GVariantIter each;
    g_variant_iter_init(&each, list.get());
    const char* name = nullptr;
    const char* title = nullptr;
    const char* program = nullptr;
    const char* programName = nullptr;
    while (g_variant_iter_next(&each, "(&s&s&s&s&s&saiai)", &name, &title, &program, &programName,
                               nullptr, nullptr, nullptr, nullptr) != 0) {
        if (std::string_view(program) != component) {
            return KWinTexts::holder(title, programName);
        }
        if (name != action) {
            giveBack(name);
        }
    }
    return std::nullopt;
}

void KWinGlobalShortcuts::askWhetherFree(std::int32_t key,
                                         const std::function<void(std::optional<bool>)>& told) {
    bus_.call(method("globalShortcutAvailable"),
              g_variant_new("(@(ai)s)", sequence(key), component), longPatience,
              [told](GVariant* reply) {
                  gboolean isFree = FALSE;
                  if (reply == nullptr || g_variant_is_of_type(reply, G_VARIANT_TYPE("(b)")) == 0) {
                      told(std::nullopt);
                      return;
                  }
                  g_variant_get(reply, "(b)", &isFree);
                  told(isFree != 0);
              });
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
    bus_.call(method("unregister"), g_variant_new("(ss)", component, action.c_str()), longPatience,
              [](GVariant*) {});
}

}  // namespace lumatile
