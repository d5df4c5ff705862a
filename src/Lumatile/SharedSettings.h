#pragma once

#include <optional>
#include <vector>

#include "commands/SnapCommand.h"
#include "oled_protection/OLEDSettings.h"
#include "preference_sync/SharedSet.h"

namespace lumatile {

/// What the values of a shared set mean.
struct SharedSettings {
    std::vector<SnapCommand> commands;
    OLEDSettings oled;

    /// A value that the set lacks stands for the defaults.
    /// @return absent when one cannot be decoded
    static std::optional<SharedSettings> decode(const SharedSet& set);
};

}  // namespace lumatile
