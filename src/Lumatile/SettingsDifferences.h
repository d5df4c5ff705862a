#pragma once

#include "Lumatile/SharedSettings.h"
#include "preference_sync/ConflictDifferences.h"

namespace lumatile {

/// The differences of two copies of the settings, as short as in "3 shortcuts, pixel shift off".
ConflictDifferences settingsDifferences(const SharedSettings& local, const SharedSettings& remote);

}  // namespace lumatile
