#pragma once

#include <functional>
#include <map>
#include <string>

#include "preference_sync/KeyValueStoring.h"

namespace lumatile {

/// Everything that computers share through one location, by key. It travels whole.
using SharedSet = std::map<std::string, Bytes, std::less<>>;

/// When a set was changed last, seconds since 1970-01-01 00:00 UTC; 0 when it does not say.
double changeTime(const SharedSet& set);

}  // namespace lumatile
