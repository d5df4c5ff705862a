#include "Lumatile/SettingsSync.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "commands/CommandStore.h"
#include "oled_protection/OLEDSettings.h"
#include "preference_sync/SharedSetCodec.h"
#include "preference_sync/SyncTimestamp.h"

namespace lumatile {

namespace {

constexpr std::array managedKeys{CommandStore::preferenceKey, OLEDSettings::preferenceKey};

/// Told apart by every computer, and nothing to a clock.
constexpr double shortestStep = 0.001;

/// The later time; one that no clock shows would be the latest for ever.
double later(double time, double other) {
    return other < SharedSetCodec::latestTime ? std::max(time, other) : time;
}

}  // namespace

SettingsSync::SettingsSync(Preferences& preferences, SharedStore& sharedStore,
                           std::function<double()> now, Closures closures)
    : sharedStore_(sharedStore),
      local_(preferences),
      remote_(sharedStore),
      now_(std::move(now)),
      closures_(std::move(closures)) {}

SettingsSync::~SettingsSync() {
    if (engine_) {
        sharedStore_.heed({});
    }
}

void SettingsSync::start() {
    if (engine_) {
        return;
    }
    engine_.emplace(local_, remote_,
                    std::vector<std::string>(managedKeys.begin(), managedKeys.end()),
                    [this] { return changeTime(); });
    sharedStore_.heed(
        {[this](const SharedSet& set) { return isUsable(set); }, [this] { return madeOn(); }});
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
    if (!engine_) {
        // What lies at the location is older than this, or is not; the first sync decides.
        local_.set(SyncTimestamp::encode(changeTime()), PreferenceSyncEngine::timestampKey);
        return;
    }
    // The engine takes it for synced from now on; whether it ever is, nobody knows yet.
    agree(madeOn());
    engine_->recordLocalChange();
}

void SettingsSync::settleConflict(bool preferLocal) {
    if (!engine_) {
        return;
    }
    agree(preferLocal ? madeOn() : engine_->conflictSummary().remoteTimestamp);
    engine_->solveConflict(preferLocal);
    reload();
}

void SettingsSync::follow(const SharedStoreChange& change) {
    if (waitsForFirstReading_ && sharedStore_.hasBeenRead()) {
        waitsForFirstReading_ = false;
        syncAtStart();
    }
    const std::optional<SyncReason> reason = UbiquitousStore::reason(change);
    const bool mayBeNewer = reason == SyncReason::server || reason == SyncReason::initialSync;
    if (mayBeNewer && sharedStore_.hasBeenRead()) {
        switch (sync()) {
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
    noteAgreement();
    // A copy: what is called may set it anew.
    if (const auto changed = statusChanged_) {
        changed();
    }
}

void SettingsSync::syncAtStart() {
    if (sync() == SyncDirection::toLocal) {
        reload();
    }
    noteAgreement();
}

SyncDirection SettingsSync::sync() {
    // What cannot be understood there is not nothing, and nothing older belongs in its place.
    if (sharedStore_.status().condition == SharedStoreStatus::Condition::notUsable) {
        return SyncDirection::none;
    }
    const double origin = madeOn();
    const bool isShared = localTime(PreferenceSyncEngine::timestampKey) == origin;
    const std::optional<SharedSet> unshared =
        isShared ? std::nullopt : std::optional(setIn(local_));
    const SyncDirection direction = engine_->sync();
    if (direction == SyncDirection::toRemote) {
        agree(origin);
    } else if (direction == SyncDirection::toLocal) {
        agree(localTime(PreferenceSyncEngine::timestampKey));
        if (unshared) {
            sharedStore_.keep(*unshared);
        }
    }
    return direction;
}

bool SettingsSync::isUsable(const SharedSet& set) {
    newestFound_ = later(newestFound_, lumatile::changeTime(set));
    return !closures_.canDecode || closures_.canDecode(set);
}

SharedSet SettingsSync::setIn(KeyValueStoring& store) {
    SharedSet set;
    for (const std::string_view key :
         {managedKeys[0], managedKeys[1], PreferenceSyncEngine::timestampKey}) {
        if (std::optional<Bytes> value = store.data(key)) {
            set.insert_or_assign(std::string(key), *std::move(value));
        }
    }
    return set;
}

double SettingsSync::localTime(std::string_view key) {
    return SyncTimestamp::decode(local_.data(key));
}

/// The time of a change that the user makes now: later than that of everything it is made on, also
/// where some computer's clock is ahead.
double SettingsSync::changeTime() {
    // The first of the three is not known again before the location has been read.
    const double newest =
        later(later(newestFound_, madeOn()), localTime(PreferenceSyncEngine::timestampKey));
    return std::max(now_(), newest + shortestStep);
}

double SettingsSync::madeOn() {
    return localTime(local_.data(agreedKey) ? agreedKey : PreferenceSyncEngine::lastSyncKey);
}

void SettingsSync::agree(double time) {
    const Bytes stored = SyncTimestamp::encode(time);
    if (local_.data(agreedKey) != stored) {
        local_.set(stored, agreedKey);
    }
}

void SettingsSync::noteAgreement() {
    const auto [local, remote] = engine_->conflictSummary();
    // Two users may have made changes at the very same time.
    if (local == remote && local > 0 && local != madeOn() &&
        sharedStore_.status().condition == SharedStoreStatus::Condition::current &&
        setIn(local_) == setIn(remote_)) {
        agree(local);
    }
}

void SettingsSync::reload() {
    closures_.reloadCommands();
    closures_.reloadOLEDSettings();
}

}  // namespace lumatile
