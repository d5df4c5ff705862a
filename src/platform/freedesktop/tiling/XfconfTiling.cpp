#include "platform/freedesktop/tiling/XfconfTiling.h"

#include <string>

#include "onboarding/SystemTiling.h"
#include "platform/freedesktop/glib/GLibHandles.h"

namespace lumatile {

namespace {

constexpr BusConnection::Method getProperty{"org.xfce.Xfconf", "/org/xfce/Xfconf",
                                            "org.xfce.Xfconf", "GetProperty"};
constexpr BusConnection::Method setProperty{"org.xfce.Xfconf", "/org/xfce/Xfconf",
                                            "org.xfce.Xfconf", "SetProperty"};
constexpr BusConnection::Method propertyChanged{"org.xfce.Xfconf", "/org/xfce/Xfconf",
                                                "org.xfce.Xfconf", "PropertyChanged"};
constexpr const char* channel = "xfwm4";
constexpr const char* property = "/general/tile_on_move";
constexpr const char* notSet = "org.xfce.Xfconf.Error.PropertyNotFound";
constexpr int patience = 5000;  // Milliseconds; the settings answer from memory.

}  // namespace

XfconfTiling::XfconfTiling(BusConnection& session) : session_(session) {
    changes_ = session_.subscribe(propertyChanged, [this](GVariant* arguments) {
        if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(ssv)")) == 0) {
            return;
        }
        const char* ofChannel = nullptr;
        const char* name = nullptr;
        GVariant* value = nullptr;
        g_variant_get(arguments, "(&s&sv)", &ofChannel, &name, &value);
        const GVariantHandle held(value);
        if (std::string_view(ofChannel) == channel && std::string_view(name) == property) {
            take(value);
        }
    });
    ask();
}

std::optional<bool> XfconfTiling::lookup(std::string_view key) {
    if (key != SystemTiling::edgeDragKey && key != SystemTiling::menuBarDragKey) {
        return std::nullopt;
    }
    ask();
    return known_;
}

void XfconfTiling::ask() {
    if (isAsking_) {
        return;
    }
    isAsking_ = true;
    session_.call(getProperty, g_variant_new("(ss)", channel, property), patience, false,
                  lifeline_.guard([this](const BusConnection::Reply& reply) {
                      isAsking_ = false;
                      answers_ = reply.value != nullptr || reply.errorName == notSet;
                      if (reply.value != nullptr &&
                          g_variant_is_of_type(reply.value, G_VARIANT_TYPE("(v)")) != 0) {
                          GVariant* boxed = nullptr;
                          g_variant_get(reply.value, "(v)", &boxed);
                          const GVariantHandle value(boxed);
                          take(boxed);
                      } else if (answers_) {
                          known_.reset();
                      }
                      // While nothing answers, what was known last holds.
                  }));
}

void XfconfTiling::take(GVariant* boxed) {
    known_ = g_variant_is_of_type(boxed, G_VARIANT_TYPE_BOOLEAN) != 0
                 ? std::optional(g_variant_get_boolean(boxed) != 0)
                 : std::nullopt;
}

bool XfconfTiling::switchOff() {
    if (!canSwitchOff()) {
        return false;
    }
    session_.call(setProperty,
                  g_variant_new("(ssv)", channel, property, g_variant_new_boolean(FALSE)), patience,
                  false, lifeline_.guard([this](const BusConnection::Reply&) { ask(); }));
    return true;
}

}  // namespace lumatile
