#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "ports/DesktopTiling.h"

namespace lumatile {

/// A desktop's own tiling, with the settings program that belongs to it.
class SimulatedDesktopTiling final : public DesktopTiling {
public:
    int majorVersion() override { return version; }
    std::optional<bool> lookup(std::string_view key) override;
    bool canOpenSettings() override { return hasSettingsProgram; }
    bool openSettings() override;
    bool canSwitchOff() override { return letsProgramsSwitch; }
    bool switchOff() override;

    int version = 15;
    std::map<std::string, bool, std::less<>> values;  ///< What is set; the rest is as it came.
    bool hasSettingsProgram = true;
    bool letsProgramsSwitch = true;

    std::size_t lookups = 0;
    std::size_t settingsOpened = 0;
};

}  // namespace lumatile
