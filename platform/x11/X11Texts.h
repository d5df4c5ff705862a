#pragma once

#include <string_view>

/// What the X11 adapters write to the log.
namespace lumatile::X11Texts {

inline constexpr std::string_view inputState = "X11InputState";
inline constexpr std::string_view noIdleTime =
    "this X server does not tell when there was input last, so idle screens stay as they are";

}  // namespace lumatile::X11Texts
