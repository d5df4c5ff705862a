#pragma once

#include <string>
#include <variant>
#include <vector>

#include "geometry/Point.h"
#include "geometry/Size.h"
#include "windows/Element.h"

namespace lumatile {

/// The value of an attribute. Points and sizes are in the accessibility space.
using AttributeValue =
    std::variant<bool, double, std::string, Point, Size, Element, std::vector<Element>>;

}  // namespace lumatile
