#include "Lumatile/UbiquitousStore.h"

namespace lumatile {

std::optional<SyncReason> UbiquitousStore::reason(const SharedStoreChange& change) {
    for (const SyncReason reason : {SyncReason::server, SyncReason::initialSync,
                                    SyncReason::quotaViolation, SyncReason::account}) {
        if (change.reasonCode == static_cast<int>(reason)) {
            return reason;
        }
    }
    return std::nullopt;
}

}  // namespace lumatile
