#pragma once

#include <string_view>

/// What the control object writes to the log.
namespace lumatile::ControlTexts {

inline constexpr std::string_view logType = "Control";
inline constexpr std::string_view nameTaken =
    "another program has the name on the session bus, so requests wait until it is free";
inline constexpr std::string_view busLost =
    "the session bus has gone away, so requests wait until there is one again";

}  // namespace lumatile::ControlTexts
