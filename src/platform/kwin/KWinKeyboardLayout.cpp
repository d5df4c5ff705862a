#include "platform/kwin/KWinKeyboardLayout.h"

#include <utility>

namespace lumatile {

namespace {

constexpr const char* service = "org.kde.keyboard";
constexpr const char* path = "/Layouts";
constexpr const char* interface = "org.kde.KeyboardLayouts";
constexpr int patience = 5000;  // Milliseconds. Nothing waits for it.

}  // namespace

KWinKeyboardLayout::KWinKeyboardLayout(KWinChannel& channel, RunLoop& runLoop,
                                       std::function<void(std::uint32_t)> changed)
    : channel_(channel),
      runLoop_(runLoop),
      changed_(std::move(changed)),
      states_(channel.observeState([this] {
          // The channel is in the middle of something.
          runLoop_.post(lifeline_.guard([this] { follow(); }));
      })) {
    follow();
}

void KWinKeyboardLayout::follow() {
    LoneBusConnection* const bus = channel_.connection();
    if (bus == std::exchange(listening_, bus) || bus == nullptr) {
        return;
    }
    const auto told = lifeline_.guard([this](GVariant* arguments) { note(arguments); });
    bus->listen({bus->peer(), path, interface, "layoutChanged"}, told);
    bus->call({service, path, interface, "getLayout"}, nullptr, patience, told);
}

void KWinKeyboardLayout::note(GVariant* arguments) {
    // With one layout there is no such service.
    if (arguments == nullptr || g_variant_is_of_type(arguments, G_VARIANT_TYPE("(u)")) == 0) {
        return;
    }
    guint32 number = 0;
    g_variant_get(arguments, "(u)", &number);
    runLoop_.post(lifeline_.guard([this, number] { changed_(number); }));
}

}  // namespace lumatile
