#pragma once

#include <string>
#include <variant>
#include <vector>

#include "geometry/Point.h"
#include "geometry/Size.h"
#include "windows/AXElement.h"

namespace lumatile {

/// The value of an attribute. Points and sizes are in the accessibility space.
using AXValue =
    std::variant<bool, double, std::string, Point, Size, AXElement, std::vector<AXElement>>;

}  // namespace lumatile
