#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ports/SharedStore.h"

/// How it stands with the shared settings, in plain words.
namespace lumatile::SyncStatusText {

/// Writes a time, seconds since 1970-01-01 00:00 UTC, as the user's country does.
using TimeText = std::function<std::string(double)>;

/// When this computer last had the same settings as which location.
std::string lastSynced(const SharedStoreStatus& status, const TimeText& timeText);

/// What failed and what can be done about it; empty where nothing did.
std::string failure(const SharedStoreStatus& status);

/// What became of copies from collisions; empty where there were none.
std::string copies(const SharedStoreStatus& status);

/// Which changes do not count and where they were kept, a sentence each.
std::vector<std::string> kept(const SharedStoreStatus& status);

/// That a clock is wrong, and by how much; empty where none is.
std::string clocks(const SharedStoreStatus& status);

/// Whether the user may have this computer's settings written in place of what lies there.
bool offersStartAnew(const SharedStoreStatus& status);

}  // namespace lumatile::SyncStatusText
