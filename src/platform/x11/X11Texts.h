#pragma once

#include <string_view>

/// What the X11 adapters write to the log.
namespace lumatile::X11Texts {

inline constexpr std::string_view noServer = "no X server can be reached, so there is no desktop";
inline constexpr std::string_view serverLost = "the X server has gone away";
inline constexpr std::string_view waylandSession =
    "This is a Wayland session: only the windows of X11 programs can be reached so far.";

/// The toolkit's words when its own connection to the server breaks, as they begin.
inline constexpr std::string_view toolkitFarewell = "The X11 connection broke";

inline constexpr std::string_view inputState = "X11InputState";
inline constexpr std::string_view noIdleTime =
    "this X server does not tell when there was input last, so idle screens stay as they are";

inline constexpr std::string_view dimOverlays = "X11DimOverlays";
inline constexpr std::string_view noDimming =
    "the screens cannot be dimmed: there is no compositor, and none of them has a gamma ramp";

/// For lists of all windows, as developers' tools show them.
inline constexpr std::string_view overlayTitle = "Lumatile dimming";

}  // namespace lumatile::X11Texts
