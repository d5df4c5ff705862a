#pragma once

namespace lumatile {

/// How far the request for the permission to control windows is.
enum class GrantState {
    requesting,  ///< Nothing has been asked yet.
    waiting,     ///< The user was sent to grant it.
    granted,
};

}  // namespace lumatile
