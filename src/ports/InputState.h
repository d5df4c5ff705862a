#pragma once

#include <optional>

namespace lumatile {

/// Port: the user's input at this moment, over all keyboards and pointers.
class InputState {
public:
    virtual ~InputState() = default;

    /// Seconds since the last input of any kind; a pause of less than two seconds may count as
    /// none. Absent where the session does not tell, also while it does not because something is to
    /// be seen undisturbed.
    virtual std::optional<double> idleSeconds() = 0;

    /// Screens will be darkened after so many seconds without input; absent: they will not. For a
    /// session that has to look more closely then.
    virtual void expectDimming(std::optional<double> /*idleThreshold*/) {}

    /// Whether the button that drags windows is held: the left one, and where window managers move
    /// and resize windows with others too, those as well.
    virtual bool isDragButtonDown() = 0;
};

}  // namespace lumatile
