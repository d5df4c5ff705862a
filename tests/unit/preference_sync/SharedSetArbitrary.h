#pragma once

#include <string>

#include <rapidcheck.h>

#include "preference_sync/SharedSet.h"
#include "preference_sync/SyncTimestamp.h"

namespace lumatile {

/// A set with values of any bytes.
inline SharedSet arbitrarySharedSet() {
    SharedSet set;
    set["__ts"] = SyncTimestamp::encode(*rc::gen::inRange(0, 2'000'000'000));
    for (const char* key : {"commands", "oledSettings", "somethingLater"}) {
        if (*rc::gen::inRange(0, 4) != 0) {
            set[key] = *rc::gen::arbitrary<std::string>();
        }
    }
    return set;
}

}  // namespace lumatile
