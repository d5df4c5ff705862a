#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Lumatile/UbiquitousStore.h"
#include "Lumatile/UserDefaultsStore.h"
#include "ports/Preferences.h"
#include "ports/SharedStore.h"
#include "preference_sync/ConflictSummary.h"
#include "preference_sync/PreferenceSyncEngine.h"
#include "preference_sync/SharedSet.h"

namespace lumatile {

/// Keeps commands and settings the same on all of the user's computers: owns the engine, runs it
/// when the shared store says so, and has what came from there taken over.
///
/// Whoever makes it calls `start` once it is allowed to run, `recordLocalChange` after each change
/// that the user made here was stored, `settleConflict` with what the user chose, and `stop` at the
/// end.
///
/// Of two changes that were made independently only one can count. The other is kept among the
/// copies at the location, whether it was made here or elsewhere.
class SettingsSync {
public:
    /// In the local store, beside the engine's times: that of the set which this computer and the
    /// location last both had. Until then the time of the last sync says it.
    static constexpr std::string_view agreedKey = "__agreed";

    struct Closures {
        /// Reads the stored commands again and applies them, without recording a change.
        std::function<void()> reloadCommands;
        /// The same for the settings of the protection.
        std::function<void()> reloadOLEDSettings;
        /// Lets the user choose between the two copies; called again while the choice is open and
        /// another change arrives.
        std::function<void(const ConflictSummary&)> presentConflict;
        /// Whether this program understands a set. One that it does not is not taken over: what is
        /// stored here stays in force. Absent: it understands all.
        std::function<bool(const SharedSet&)> canDecode = nullptr;
    };

    /// Does nothing yet.
    /// @param preferences and `sharedStore` outlive it
    /// @param now seconds since 1970-01-01 00:00 UTC
    SettingsSync(Preferences& preferences, SharedStore& sharedStore, std::function<double()> now,
                 Closures closures);
    SettingsSync(const SettingsSync&) = delete;
    SettingsSync& operator=(const SettingsSync&) = delete;
    ~SettingsSync();

    /// Brings both sides together, as soon as the shared store can be read, and follows its changes
    /// from then on. A conflict found now is not presented; the next change does that. Nothing when
    /// it was started before.
    void start();

    /// Follows the shared store no longer.
    void stop() { watch_.reset(); }

    /// Shares what the user has changed here. Before `start` it is only noted when that was.
    void recordLocalChange();

    /// The copy of the location, as far as it can be used.
    SharedSet sharedSet() { return setIn(remote_); }

    /// Makes the copy that the user chose that of all computers, and applies it here. Nothing
    /// before `start`.
    /// @param preferLocal this computer's copy
    void settleConflict(bool preferLocal);

    // For the settings window.

    SharedStoreStatus status() { return sharedStore_.status(); }

    /// What to call after `status` may have become another one.
    void onStatusChange(std::function<void()> changed) { statusChanged_ = std::move(changed); }

    /// Names the location, or none; it is stored by the shared store itself.
    void setLocation(const std::optional<std::string>& location) {
        sharedStore_.setLocation(location);
    }

    /// Has this computer's settings written where the shared ones are damaged or missing.
    void startAnew() { sharedStore_.startAnew(); }

private:
    void follow(const SharedStoreChange& change);
    void syncAtStart();
    SyncDirection sync();
    void reload();
    bool isUsable(const SharedSet& set);
    static SharedSet setIn(KeyValueStoring& store);
    double localTime(std::string_view key);
    double changeTime();
    double madeOn();
    void agree(double time);
    void noteAgreement();

    SharedStore& sharedStore_;
    UserDefaultsStore local_;
    UbiquitousStore remote_;
    std::function<double()> now_;
    Closures closures_;
    std::optional<PreferenceSyncEngine> engine_;  ///< None before `start`.
    bool waitsForFirstReading_ = false;
    double newestFound_ = 0;  ///< The latest time of all sets that were found.
    std::function<void()> statusChanged_;
    SharedStoreWatch watch_;
};

}  // namespace lumatile
