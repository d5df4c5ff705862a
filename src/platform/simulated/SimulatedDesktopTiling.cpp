#include "platform/simulated/SimulatedDesktopTiling.h"

#include "onboarding/SystemTiling.h"

namespace lumatile {

std::optional<bool> SimulatedDesktopTiling::lookup(std::string_view key) {
    ++lookups;
    const auto found = values.find(key);
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

bool SimulatedDesktopTiling::openSettings() {
    settingsOpened += hasSettingsProgram ? 1 : 0;
    return hasSettingsProgram;
}

bool SimulatedDesktopTiling::switchOff() {
    if (!letsProgramsSwitch) {
        return false;
    }
    values.insert_or_assign(std::string(SystemTiling::edgeDragKey), false);
    values.insert_or_assign(std::string(SystemTiling::menuBarDragKey), false);
    return true;
}

}  // namespace lumatile
