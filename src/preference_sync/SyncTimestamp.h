#pragma once

#include <optional>

#include "preference_sync/KeyValueStoring.h"

/// The stored form of a time: the eight bytes of a double, the lowest first.
namespace lumatile::SyncTimestamp {

/// @param seconds since 1970-01-01 00:00 UTC
Bytes encode(double seconds);

/// @return 0, older than every change, when there is no value or one of another length
double decode(const std::optional<Bytes>& stored);

}  // namespace lumatile::SyncTimestamp
