#pragma once

#include <cstdint>
#include <variant>

#include "platform/x11/X11PixelRect.h"

namespace lumatile {

/// A state of a window that the window manager is asked to give or take.
struct X11StateRequest {
    enum class State : std::uint8_t { maximized, maximizedVertically, shaded };

    State state = State::maximized;  ///< `maximized`: on both axes.
    bool isAdded = false;            ///< Else it is taken away.

    bool operator==(const X11StateRequest&) const = default;
};

/// A place that the window manager is asked to give a window.
struct X11PlaceRequest {
    /// Corner of the decoration on the root, and size of the client; no size where it stays.
    X11PixelRect place;
    bool withSize = false;

    bool operator==(const X11PlaceRequest&) const = default;
};

/// One message to the window manager about a window.
using X11WindowRequest = std::variant<X11StateRequest, X11PlaceRequest>;

}  // namespace lumatile
