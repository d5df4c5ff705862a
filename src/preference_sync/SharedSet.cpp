#include "preference_sync/SharedSet.h"

#include "preference_sync/PreferenceSyncEngine.h"
#include "preference_sync/SyncTimestamp.h"

namespace lumatile {

double changeTime(const SharedSet& set) {
    const auto found = set.find(PreferenceSyncEngine::timestampKey);
    return found == set.end() ? 0 : SyncTimestamp::decode(found->second);
}

}  // namespace lumatile
