#include "platform/freedesktop/bus/SingleInstance.h"

namespace lumatile {

SingleInstance::SingleInstance(BusConnection& session, std::string_view display,
                               const std::function<void()>& openSettings)
    : openSettings_(openSettings), bus_(session, display, openSettings), folder_(display) {}

InstanceClaim SingleInstance::claim() {
    InstanceClaim claim = bus_.claim();
    if (claim == InstanceClaim::unavailable) {
        claim = folder_.claim();
    }
    return claim == InstanceClaim::unavailable ? InstanceClaim::first : claim;
}

void SingleInstance::dispatch() {
    if (folder_.consume()) {
        openSettings_();
    }
}

}  // namespace lumatile
