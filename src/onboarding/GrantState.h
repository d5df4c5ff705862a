#pragma once

namespace lumatile {

/// How far the user has come with letting the program control windows.
enum class GrantState {
    requesting,  ///< Nothing has been asked yet.
    waiting,     ///< The user was sent to grant it.
    granted,
};

}  // namespace lumatile
