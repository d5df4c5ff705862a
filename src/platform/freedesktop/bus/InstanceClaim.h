#pragma once

#include <cstdint>

namespace lumatile {

/// What came of the attempt to be the one program of this desktop.
enum class InstanceClaim : std::uint8_t {
    first,        ///< This process is the one; it is told when another one starts.
    second,       ///< Another one runs.
    unreachable,  ///< Another one runs, but does not answer.
    unavailable,  ///< There is no place where programs could find one another.
};

}  // namespace lumatile
