#include "platform/freedesktop/bus/SingleInstance.h"

namespace lumatile {

SingleInstance::SingleInstance(BusConnection& session, std::string_view display,
                               const std::function<void()>& openSettings)
    : openSettings_(openSettings), bus_(session, display, openSettings), folder_(display) {}

InstanceClaim SingleInstance::claim() {
    if (folder_.claim() == InstanceClaim::second) {
        // The bus tells whether it answers, but may have been started anew meanwhile, or be gone.
        const InstanceClaim onBus = bus_.ask();
        if (onBus != InstanceClaim::unavailable) {
            return onBus;
        }
        return folder_.ask() ? InstanceClaim::second : InstanceClaim::unreachable;
    }
    // One with another run-time folder, or none, is known to the bus alone.
    const InstanceClaim onBus = bus_.claim();
    return onBus == InstanceClaim::unavailable ? InstanceClaim::first : onBus;
}

void SingleInstance::dispatch() {
    if (folder_.consume()) {
        openSettings_();
    }
}

}  // namespace lumatile
