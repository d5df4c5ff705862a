#pragma once

namespace lumatile {

/// What a look at both copies came to.
enum class SyncDirection {
    none,      ///< They are of the same time; nothing was copied.
    toRemote,  ///< This computer's copy was newer and is now the shared one.
    toLocal,   ///< The shared copy was newer and is now this computer's.
    conflict,  ///< Both changed since the last sync; nothing was copied, the user has to choose.
};

}  // namespace lumatile
