#pragma once

namespace lumatile {

/// Why the shared store tells of a change. The values are the codes that stores tell.
enum class SyncReason {
    server = 0,          ///< Another computer changed the set.
    initialSync = 1,     ///< The first contact with a location.
    quotaViolation = 2,  ///< Something could not be stored for want of room.
    account = 3,         ///< The location is another one now.
};

/// The code by which stores tell of `reason`.
constexpr int code(SyncReason reason) { return static_cast<int>(reason); }

}  // namespace lumatile
