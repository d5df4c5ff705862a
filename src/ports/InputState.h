#pragma once

#include <optional>

namespace lumatile {

/// Port: the user's input at this moment, over all keyboards and pointers.
class InputState {
public:
    virtual ~InputState() = default;

    /// Seconds since the last input of any kind; absent where the session does not tell.
    virtual std::optional<double> idleSeconds() = 0;

    /// Whether the button that drags windows is held: the left one, and where window managers move
    /// and resize windows with others too, those as well.
    virtual bool isDragButtonDown() = 0;
};

}  // namespace lumatile
