#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Lumatile/SettingsSync.h"
#include "platform/simulated/SimulatedLog.h"
#include "platform/simulated/SimulatedPreferences.h"
#include "platform/simulated/SimulatedSharedFolder.h"
#include "preference_sync/SyncTimestamp.h"

namespace lumatile {

/// Lets time pass and the program run in between: in one stride it would see all that has happened
/// at once.
inline void pass(SimulatedRunLoop& runLoop, double seconds) {
    constexpr double stride = 0.05;
    for (double passed = 0; passed < seconds; passed += stride) {
        runLoop.advance(stride);
    }
}

/// A computer whose settings are shared through a simulated folder.
class SyncedComputer {
public:
    /// @param clockError what its clock shows too much, seconds
    SyncedComputer(SimulatedSharedStore& itsStore, SimulatedRunLoop& runLoop, double clockError = 0)
        : store(itsStore), preferences(log_, runLoop), runLoop_(runLoop), clockError_(clockError) {
        makeSync();
    }
    SyncedComputer(const SyncedComputer&) = delete;
    SyncedComputer& operator=(const SyncedComputer&) = delete;
    ~SyncedComputer() = default;

    /// The program ends and is started anew.
    void restart() {
        sync.reset();
        store.restart();
        makeSync();
        sync->start();
    }

    double now() { return runLoop_.now() + clockError_; }

    /// The user changes a value, which is stored and shared.
    void edit(const std::string& key, const Bytes& value) {
        preferences.setBytes(key, value);
        sync->recordLocalChange();
    }

    /// The same, cut off after the change was noted and before it was shared.
    void editAndEnd(const std::string& key, const Bytes& value) {
        preferences.setBytes(key, value);
        preferences.setBytes("__ts", SyncTimestamp::encode(now()));
        restart();
    }

    double time(const std::string& key) { return SyncTimestamp::decode(preferences.bytes(key)); }

    /// Commands and settings as they are stored here.
    std::pair<Bytes, Bytes> values() {
        return {preferences.bytes("commands").value_or(""),
                preferences.bytes("oledSettings").value_or("")};
    }

    SimulatedSharedStore& store;
    SimulatedPreferences preferences;
    std::unique_ptr<SettingsSync> sync;
    std::vector<std::string> calls;  ///< "commands", "oled" and "conflict", in their order.
    std::vector<ConflictSummary> conflicts;

private:
    void makeSync() {
        sync = std::make_unique<SettingsSync>(
            preferences, store, [this] { return now(); },
            SettingsSync::Closures{[this] { calls.emplace_back("commands"); },
                                   [this] { calls.emplace_back("oled"); },
                                   [this](const ConflictSummary& summary) {
                                       calls.emplace_back("conflict");
                                       conflicts.push_back(summary);
                                   }});
    }

    SimulatedLog log_;
    SimulatedRunLoop& runLoop_;
    double clockError_;
};

}  // namespace lumatile
