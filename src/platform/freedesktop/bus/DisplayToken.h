#pragma once

#include <string>
#include <string_view>

namespace lumatile {

/// A display's name as part of other names: letters, digits and underscores alone, never with a
/// digit first; different displays have different ones. The number of the screen does not count.
/// @param display as in $DISPLAY, such as ":0.0"
std::string displayToken(std::string_view display);

}  // namespace lumatile
