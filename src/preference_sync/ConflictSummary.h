#pragma once

namespace lumatile {

/// When each of two copies that both changed was changed last.
struct ConflictSummary {
    double localTimestamp = 0;   ///< This computer's copy, seconds since 1970-01-01 00:00 UTC; 0:
                                 ///< never.
    double remoteTimestamp = 0;  ///< The shared copy, likewise.

    friend bool operator==(const ConflictSummary&, const ConflictSummary&) = default;
};

}  // namespace lumatile
