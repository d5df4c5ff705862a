#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "preference_sync/PreferenceSyncEngine.h"
#include "preference_sync/SyncTimestamp.h"
#include "tests/unit/preference_sync/RecordedStore.h"

namespace lumatile {
namespace {

/// Two stores in an arbitrary state. Few times, so that equal ones are common, and among them none,
/// negative ones and such of a wrong length.
struct Pair {
    Pair() {
        fill(local, "local");
        fill(remote, "remote");
        fillTime(local, "__lastSync");
        now = *rc::gen::element(1.0, 2.0, 3.0, 4.0, 1e9);
    }

    static void fillTime(RecordedStore& store, const std::string& key) {
        switch (*rc::gen::inRange(0, 8)) {
            case 0:
                return;
            case 1:
                store.values[key] = *rc::gen::arbitrary<std::string>();
                return;
            default:
                store.values[key] =
                    SyncTimestamp::encode(*rc::gen::element(-1.0, 0.0, 1.0, 2.0, 3.0, 4.0));
        }
    }

    static void fill(RecordedStore& store, const std::string& side) {
        fillTime(store, "__ts");
        for (const std::string& key : keys) {
            if (*rc::gen::inRange(0, 4) != 0) {
                store.values[key] = side + *rc::gen::element("1", "2");
            }
        }
        store.values["other"] = side;
    }

    std::vector<std::optional<Bytes>> set(RecordedStore& store) const {
        std::vector<std::optional<Bytes>> values;
        for (const std::string& key : keys) {
            values.push_back(store.data(key));
        }
        return values;
    }

    double time(RecordedStore& store, std::string_view key) const {
        return SyncTimestamp::decode(store.data(key));
    }

    inline static const std::vector<std::string> keys{"commands", "oledSettings"};
    RecordedStore::Journal journal;
    RecordedStore local{"local", journal};
    RecordedStore remote{"remote", journal};
    double now = 0;
    PreferenceSyncEngine engine{local, remote, keys, [this] { return now; }};
};

RC_GTEST_PROP(PreferenceSyncEngine, aSyncCopiesAWholeSetOrNothing, ()) {
    Pair pair;
    const auto localBefore = pair.local.values;
    const auto remoteBefore = pair.remote.values;
    const auto localSet = pair.set(pair.local);
    const auto remoteSet = pair.set(pair.remote);
    const double localTime = pair.time(pair.local, "__ts");
    const double remoteTime = pair.time(pair.remote, "__ts");
    const double lastSync = pair.time(pair.local, "__lastSync");

    const SyncDirection direction = pair.engine.sync();
    RC_TAG(static_cast<int>(direction));

    RC_ASSERT((direction == SyncDirection::none) == (localTime == remoteTime));
    const bool bothChanged = lastSync > 0 && std::min(localTime, remoteTime) > lastSync;
    RC_ASSERT((direction == SyncDirection::conflict) == (bothChanged && localTime != remoteTime));
    switch (direction) {
        case SyncDirection::none:
        case SyncDirection::conflict:
            RC_ASSERT(pair.journal.writes.empty());
            RC_ASSERT(pair.local.values == localBefore);
            RC_ASSERT(pair.remote.values == remoteBefore);
            break;
        case SyncDirection::toLocal:
            RC_ASSERT(remoteTime > localTime);
            RC_ASSERT(pair.set(pair.local) == remoteSet);
            RC_ASSERT(pair.remote.values == remoteBefore);
            break;
        case SyncDirection::toRemote:
            RC_ASSERT(localTime > remoteTime);
            RC_ASSERT(pair.set(pair.remote) == localSet);
            RC_ASSERT(pair.set(pair.local) == localSet);
            break;
    }
    if (direction == SyncDirection::toLocal || direction == SyncDirection::toRemote) {
        const double newer = std::max(localTime, remoteTime);
        RC_ASSERT(pair.time(pair.local, "__ts") == newer);
        RC_ASSERT(pair.time(pair.remote, "__ts") == newer);
        RC_ASSERT(pair.time(pair.local, "__lastSync") == newer);
        RC_ASSERT(pair.engine.sync() == SyncDirection::none);
    }
    RC_ASSERT(pair.local.data("other") == "local");
    RC_ASSERT(pair.remote.data("other") == "remote");
}

RC_GTEST_PROP(PreferenceSyncEngine, aRecordedChangeMakesBothSidesTheSame, ()) {
    Pair pair;
    const auto localSet = pair.set(pair.local);
    RC_ASSERT(pair.engine.recordLocalChange());
    RC_ASSERT(pair.set(pair.local) == localSet);
    RC_ASSERT(pair.set(pair.remote) == localSet);
    RC_ASSERT(pair.engine.conflictSummary() == (ConflictSummary{pair.now, pair.now}));
    RC_ASSERT(pair.engine.sync() == SyncDirection::none);
}

RC_GTEST_PROP(PreferenceSyncEngine, aSettledConflictMakesBothSidesTheChosenOne,
              (bool preferLocal)) {
    Pair pair;
    const auto chosen = pair.set(preferLocal ? pair.local : pair.remote);
    pair.engine.solveConflict(preferLocal);
    RC_ASSERT(pair.set(pair.local) == chosen);
    RC_ASSERT(pair.set(pair.remote) == chosen);
    RC_ASSERT(pair.engine.conflictSummary() == (ConflictSummary{pair.now, pair.now}));
    RC_ASSERT(pair.time(pair.local, "__lastSync") == pair.now);
    RC_ASSERT(pair.engine.sync() == SyncDirection::none);
}

/// A side whose time has arrived has its whole set: what others may read is never a part.
RC_GTEST_PROP(PreferenceSyncEngine, aTimeIsWrittenAfterItsSet, (bool preferLocal)) {
    Pair pair;
    const auto localSet = pair.set(pair.local);
    const auto remoteSet = pair.set(pair.remote);
    const auto localTime = pair.local.data("__ts");
    const auto remoteTime = pair.remote.data("__ts");
    const int operation = *rc::gen::inRange(0, 3);
    pair.journal.limit = *rc::gen::inRange<std::size_t>(0, 7);
    if (operation == 0) {
        pair.engine.sync();
    } else if (operation == 1) {
        pair.engine.recordLocalChange();
    } else {
        pair.engine.solveConflict(preferLocal);
    }
    const auto isWhole = [&](RecordedStore& store) {
        return pair.set(store) == localSet || pair.set(store) == remoteSet;
    };
    RC_ASSERT(pair.remote.data("__ts") == remoteTime || isWhole(pair.remote));
    RC_ASSERT(pair.local.data("__ts") == localTime || isWhole(pair.local));
}

}  // namespace
}  // namespace lumatile
