#include "preference_sync/PreferenceSyncEngine.h"

#include <utility>

#include "preference_sync/SyncTimestamp.h"

namespace lumatile {

namespace {

double time(KeyValueStoring& store, std::string_view key) {
    return SyncTimestamp::decode(store.data(key));
}

void setTime(KeyValueStoring& store, std::string_view key, double seconds) {
    store.set(SyncTimestamp::encode(seconds), key);
}

}  // namespace

PreferenceSyncEngine::PreferenceSyncEngine(KeyValueStoring& local, KeyValueStoring& remote,
                                           std::vector<std::string> managedKeys,
                                           std::function<double()> now)
    : local_(local), remote_(remote), managedKeys_(std::move(managedKeys)), now_(std::move(now)) {}

SyncDirection PreferenceSyncEngine::sync() {
    const auto [local, remote] = conflictSummary();
    const double lastSync = time(local_, lastSyncKey);
    if (local == remote) {
        return SyncDirection::none;
    }
    if (lastSync > 0 && lastSync < local && lastSync < remote) {
        return SyncDirection::conflict;
    }
    if (local < remote) {
        copy(remote_, local_);
        setTime(local_, timestampKey, remote);
        setTime(local_, lastSyncKey, remote);
        return SyncDirection::toLocal;
    }
    copy(local_, remote_);
    setTime(remote_, timestampKey, local);
    setTime(local_, lastSyncKey, local);
    remote_.synchronize();
    return SyncDirection::toRemote;
}

bool PreferenceSyncEngine::recordLocalChange() {
    const double changed = now_();
    setTime(local_, timestampKey, changed);
    copy(local_, remote_);
    setTime(remote_, timestampKey, changed);
    setTime(local_, lastSyncKey, changed);
    remote_.synchronize();
    return true;
}

ConflictSummary PreferenceSyncEngine::conflictSummary() const {
    return {time(local_, timestampKey), time(remote_, timestampKey)};
}

void PreferenceSyncEngine::solveConflict(bool preferLocal) {
    if (preferLocal) {
        copy(local_, remote_);
    } else {
        copy(remote_, local_);
    }
    const double settled = now_();
    setTime(local_, timestampKey, settled);
    setTime(remote_, timestampKey, settled);
    if (preferLocal) {
        remote_.synchronize();
    }
    setTime(local_, lastSyncKey, settled);
}

void PreferenceSyncEngine::copy(KeyValueStoring& from, KeyValueStoring& to) const {
    for (const std::string& key : managedKeys_) {
        to.set(from.data(key), key);
    }
}

}  // namespace lumatile
