#include "Lumatile/LaunchAtLogin.h"

#include <string>

namespace lumatile {

void LaunchAtLogin::refresh() {
    const bool enabled = item_.status() == LoginItem::Status::enabled;
    if (enabled == isEnabled_) {
        return;
    }
    isEnabled_ = enabled;
    // A copy, since whoever is told may hand in another.
    if (const auto changed = changed_) {
        changed();
    }
}

void LaunchAtLogin::setEnabled(bool enabled) {
    const auto error = enabled ? item_.registerItem() : item_.unregisterItem();
    if (error) {
        const std::string verb = enabled ? "register" : "unregister";
        log_.write("LaunchAtLogin", "failed to " + verb + ": " + *error);
    }
    refresh();
}

}  // namespace lumatile
