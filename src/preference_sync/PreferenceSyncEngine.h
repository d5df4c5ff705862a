#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "preference_sync/ConflictSummary.h"
#include "preference_sync/KeyValueStoring.h"
#include "preference_sync/SyncDirection.h"

namespace lumatile {

/// Keeps a set of values the same in two stores. Values are copied whole and always all of them;
/// which side is copied, two times decide, never what the values hold. An operation that is cut off
/// between its writes leaves the times so that the next `sync` finishes it or asks the user.
class PreferenceSyncEngine {
public:
    /// In both stores: when the set was changed last.
    static constexpr std::string_view timestampKey = "__ts";
    /// In the local store: the time of the set that was last the same on both sides.
    static constexpr std::string_view lastSyncKey = "__lastSync";

    /// @param local and `remote` outlive the engine
    /// @param managedKeys what is copied, in this order
    /// @param now seconds since 1970-01-01 00:00 UTC
    PreferenceSyncEngine(KeyValueStoring& local, KeyValueStoring& remote,
                         std::vector<std::string> managedKeys, std::function<double()> now);

    /// Decides which side is newer and copies it to the other. On a computer that never synced, the
    /// newer side simply wins.
    SyncDirection sync();

    /// Makes this computer's set, which the user has just changed, the shared one.
    /// @return true
    bool recordLocalChange();

    /// The times of the two copies, for the user to choose by.
    ConflictSummary conflictSummary() const;

    /// Makes the chosen copy that of both sides, as changed now.
    void solveConflict(bool preferLocal);

private:
    void copy(KeyValueStoring& from, KeyValueStoring& to) const;

    KeyValueStoring& local_;
    KeyValueStoring& remote_;
    std::vector<std::string> managedKeys_;
    std::function<double()> now_;
};

}  // namespace lumatile
