#include "Lumatile/SettingsSync.h"

#include <string>
#include <utility>
#include <vector>

#include "commands/CommandStore.h"
#include "oled_protection/OLEDSettings.h"

namespace lumatile {

SettingsSync::SettingsSync(Preferences& preferences, SharedStore& sharedStore,
                           std::function<double()> now, Closures closures)
    : sharedStore_(sharedStore),
      local_(preferences),
      remote_(sharedStore),
      now_(std::move(now)),
      closures_(std::move(closures)) {}

void SettingsSync::start() {
    if (engine_) {
        return;
    }
    engine_.emplace(local_, remote_,
                    std::vector<std::string>{std::string(CommandStore::preferenceKey),
                                             std::string(OLEDSettings::preferenceKey)},
                    now_);
    if (sharedStore_.hasBeenRead()) {
        syncAtStart();
    } else {
        // To compare with a set that nobody has seen would be to take it for an empty one.
        waitsForFirstReading_ = true;
    }
    remote_.synchronize();
    watch_ = sharedStore_.observe([this](const SharedStoreChange& change) { follow(change); });
}

void SettingsSync::recordLocalChange() {
    if (engine_) {
        engine_->recordLocalChange();
    }
}

void SettingsSync::settleConflict(bool preferLocal) {
    if (engine_) {
        engine_->solveConflict(preferLocal);
        reload();
    }
}

void SettingsSync::follow(const SharedStoreChange& change) {
    if (waitsForFirstReading_ && sharedStore_.hasBeenRead()) {
        waitsForFirstReading_ = false;
        syncAtStart();
    }
    const std::optional<SyncReason> reason = UbiquitousStore::reason(change);
    const bool mayBeNewer = reason == SyncReason::server || reason == SyncReason::initialSync;
    if (mayBeNewer && sharedStore_.hasBeenRead()) {
        switch (engine_->sync()) {
            case SyncDirection::toLocal:
                reload();
                break;
            case SyncDirection::conflict:
                closures_.presentConflict(engine_->conflictSummary());
                break;
            case SyncDirection::none:
            case SyncDirection::toRemote:
                break;
        }
    }
    // A copy: what is called may set it anew.
    if (const auto changed = statusChanged_) {
        changed();
    }
}

void SettingsSync::syncAtStart() {
    if (engine_->sync() == SyncDirection::toLocal) {
        reload();
    }
}

void SettingsSync::reload() {
    closures_.reloadCommands();
    closures_.reloadOLEDSettings();
}

}  // namespace lumatile
