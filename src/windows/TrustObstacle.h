#pragma once

namespace lumatile {

/// Why a session does not let the process control windows.
enum class TrustObstacle {
    unknown,               ///< It does not say.
    noWindowManager,       ///< Nothing is there that could be told to move windows.
    windowManagerRefuses,  ///< Something is, but it takes no such orders from programs.
    otherDisplaySystem,    ///< The windows belong to a display system that is not reached.
};

}  // namespace lumatile
